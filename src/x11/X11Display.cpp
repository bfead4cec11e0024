#include <parchlet/x11/X11Display.h>

#include <algorithm>
#include <cstring>

#include "platform/threads/Mutex.h"

#include "x11/Area.h"
#include "x11/Connection.h"
#include "x11/Monitors.h"
#include "x11/PixelFormat.h"
#include "x11/QuietPipe.h"
#include "x11/SharedImage.h"

namespace {

constexpr std::uint32_t kAllPlanes = 0xFFFFFFFF;

bool CheckScreenFormat(const Connection& connection, std::string& error) {
  if (!connection.CheckAlive(error)) {
    return false;
  }
  const xcb_screen_t& screen = *connection.Screen();
  if (!HasPlainColors(screen, screen.root_visual)) {
    error = "the screen has depth " + std::to_string(screen.root_depth) +
            ", or other colours, instead of 0x00RRGGBB";
    return false;
  }
  return CheckImageFormat(connection, screen.root_depth, error);
}

bool FetchShared(const Connection& connection, const RECT& area, const SharedImage& image,
                 std::string& error) {
  Refusal refusal;
  const Reply<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(
      connection.Get(),
      xcb_shm_get_image(connection.Get(), connection.Screen()->root,
                        static_cast<std::int16_t>(area.left), static_cast<std::int16_t>(area.top),
                        WidthOf(area), HeightOf(area), kAllPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP,
                        image.Segment(), 0),
      refusal.Receive()));
  if (reply == nullptr) {
    error = connection.Describe("show its screen", refusal.Get());
  }
  return reply != nullptr;
}

bool FetchThroughConnection(const Connection& connection, const RECT& area, std::uint32_t* pixels,
                            std::string& error) {
  Refusal refusal;
  const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
      connection.Get(),
      xcb_get_image(connection.Get(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.Screen()->root,
                    static_cast<std::int16_t>(area.left), static_cast<std::int16_t>(area.top),
                    WidthOf(area), HeightOf(area), kAllPlanes),
      refusal.Receive()));
  const std::size_t bytes = PixelsOf(area) * sizeof(*pixels);
  if (reply == nullptr || std::size_t{reply->length} * 4 < bytes) {
    error = connection.Describe("show its screen", refusal.Get());
    return false;
  }
  std::memcpy(pixels, xcb_get_image_data(reply.get()), bytes);
  return true;
}

bool Fetch(const Connection& connection, const RECT& area, std::uint32_t* pixels,
           std::string& error) {
  if (!FitsX11(area) || IsEmptyArea(area)) {
    error = "there is no such part of an X11 screen";
    return false;
  }
  const auto image =
      SharedImage::CanShare(connection) ? SharedImage::Create(connection, PixelsOf(area)) : nullptr;
  if (image == nullptr) {
    return FetchThroughConnection(connection, area, pixels, error);
  }
  const bool isFetched = FetchShared(connection, area, *image, error);
  if (isFetched) {
    std::copy_n(image->Pixels(), PixelsOf(area), pixels);
  }
  return isFetched;
}

}  // namespace

struct X11Display::State {
  explicit State(const std::string& displayName) : connection(displayName) {
    MutexLock lock(mutex);
    CheckScreenFormat(connection, error);
  }

  Mutex mutex;
  const Connection connection PARCHLET_GUARDED_BY(mutex);
  std::string error PARCHLET_GUARDED_BY(mutex);
};

X11Display::X11Display(const std::string& displayName) {
  const QuietPipe quiet;
  state = std::make_unique<State>(displayName);
}

X11Display::~X11Display() {
  const QuietPipe quiet;
  state.reset();
}

std::string X11Display::GetError() const {
  MutexLock lock(state->mutex);
  return state->error;
}

std::vector<DisplayMonitor> X11Display::GetMonitors() const {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  std::vector<DisplayMonitor> monitors = QueryMonitors(state->connection, state->error);
  if (!monitors.empty()) {
    state->error.clear();
  }
  return monitors;
}

bool X11Display::Capture(const RECT& area, std::uint32_t* pixels) {
  const QuietPipe quiet;
  MutexLock lock(state->mutex);
  if (!CheckScreenFormat(state->connection, state->error) ||
      !Fetch(state->connection, area, pixels, state->error)) {
    return false;
  }
  state->error.clear();
  return true;
}
