#include "x11/Monitors.h"

#include <xcb/randr.h>

#include <algorithm>
#include <iterator>

#include "x11/Area.h"

namespace {

// How many units of UTF-16 a display's name may have.
constexpr std::size_t kMaxNameUnits = 31;

// Returns the longest start of a UTF-8 text that fits a display's name.
std::string CutName(const std::string& name) {
  std::size_t units = 0;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const auto byte = static_cast<unsigned char>(name[i]);
    const bool isContinued = (byte & 0xC0U) == 0x80U;
    units += isContinued ? 0 : byte >= 0xF0U ? 2 : 1;
    if (units > kMaxNameUnits) {
      return name.substr(0, i);
    }
  }
  return name;
}

// Monitors came with 1.5.
bool KnowsMonitors(const Connection& connection) {
  if (!connection.Has(xcb_randr_id)) {
    return false;
  }
  const Reply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
      connection.Get(), xcb_randr_query_version(connection.Get(), 1, 5), nullptr));
  return version != nullptr && (version->major_version > 1 ||
                                (version->major_version == 1 && version->minor_version >= 5));
}

std::vector<DisplayMonitor> WholeScreen(const Connection& connection, std::string& error) {
  Refusal refusal;
  const Reply<xcb_get_geometry_reply_t> root(xcb_get_geometry_reply(
      connection.Get(), xcb_get_geometry(connection.Get(), connection.Screen()->root),
      refusal.Receive()));
  if (root == nullptr) {
    error = connection.Describe("tell the screen's size", refusal.Get());
    return {};
  }
  return {{"screen", {0, 0, root->width, root->height}}};
}

std::string NameOfAtom(const Connection& connection, xcb_get_atom_name_cookie_t asked) {
  const Reply<xcb_get_atom_name_reply_t> reply(
      xcb_get_atom_name_reply(connection.Get(), asked, nullptr));
  return reply == nullptr
             ? std::string()
             : std::string(xcb_get_atom_name_name(reply.get()),
                           static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
}

std::vector<DisplayMonitor> ReadMonitors(const Connection& connection,
                                         const xcb_randr_get_monitors_reply_t* reply) {
  struct Asked {
    xcb_randr_monitor_info_t info;
    xcb_get_atom_name_cookie_t name;
  };
  std::vector<Asked> asked;
  asked.reserve(reply->nMonitors);
  auto infos = xcb_randr_get_monitors_monitors_iterator(reply);
  for (; infos.rem > 0; xcb_randr_monitor_info_next(&infos)) {
    asked.push_back({*infos.data, xcb_get_atom_name(connection.Get(), infos.data->name)});
  }
  std::stable_partition(asked.begin(), asked.end(),
                        [](const Asked& monitor) { return monitor.info.primary != 0; });
  std::vector<DisplayMonitor> monitors;
  monitors.reserve(asked.size());
  for (const auto& [info, name] : asked) {
    monitors.push_back({CutName(NameOfAtom(connection, name)),
                        {info.x, info.y, info.x + info.width, info.y + info.height}});
  }
  return monitors;
}

}  // namespace

std::vector<DisplayMonitor> QueryMonitors(const Connection& connection, std::string& error) {
  if (!connection.CheckAlive(error)) {
    return {};
  }
  if (!KnowsMonitors(connection)) {
    return WholeScreen(connection, error);
  }
  Refusal refusal;
  const Reply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
      connection.Get(), xcb_randr_get_monitors(connection.Get(), connection.Screen()->root, 1),
      refusal.Receive()));
  if (reply == nullptr) {
    error = connection.Describe("tell its monitors", refusal.Get());
    return {};
  }
  std::vector<DisplayMonitor> monitors = ReadMonitors(connection, reply.get());
  std::erase_if(monitors, [](const DisplayMonitor& monitor) { return IsEmptyArea(monitor.area); });
  if (monitors.empty()) {
    error = "the X server has no active monitor";
  }
  return monitors;
}

std::optional<DisplayMonitor> FindMonitor(const Connection& connection, const std::string& name,
                                          std::string& error) {
  const std::vector<DisplayMonitor> monitors = QueryMonitors(connection, error);
  const auto found = std::find_if(
      monitors.begin(), monitors.end(),
      [&name](const DisplayMonitor& monitor) { return name.empty() || monitor.name == name; });
  if (found != monitors.end()) {
    return *found;
  }
  if (!monitors.empty()) {
    error = "there is no monitor \"" + name + "\"";
  }
  return std::nullopt;
}

unsigned WatchMonitors(const Connection& connection) {
  if (!KnowsMonitors(connection)) {
    return 0;
  }
  xcb_randr_select_input(connection.Get(), connection.Screen()->root,
                         XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                             XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
  return xcb_get_extension_data(connection.Get(), &xcb_randr_id)->first_event;
}
