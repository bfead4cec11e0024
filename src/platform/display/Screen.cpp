#include "platform/display/Screen.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <new>
#include <optional>
#include <string>

#include "platform/display/CurrentDisplay.h"
#include "platform/display/ScreenArea.h"
#include "platform/text/Unicode.h"

namespace {

constexpr std::int64_t kMaxSide = 32767;
constexpr std::uint32_t kBlack = 0xFF000000;

bool IsUsable(const DisplayMonitor& monitor) {
  return !IsEmptyArea(monitor.area) && WidthOf(monitor.area) <= kMaxSide &&
         HeightOf(monitor.area) <= kMaxSide;
}

// A host's display may throw: it then has no monitors, or the capture failed.
std::vector<DisplayMonitor> AskForMonitors() {
  try {
    return CurrentDisplay().GetMonitors();
  } catch (...) {
    return {};
  }
}

bool Capture(const RECT& area, std::uint32_t* pixels) {
  try {
    return CurrentDisplay().Capture(area, pixels);
  } catch (...) {
    return false;
  }
}

std::vector<DisplayMonitor> UsableMonitors() {
  std::vector<DisplayMonitor> monitors = AskForMonitors();
  std::erase_if(monitors, [](const DisplayMonitor& monitor) { return !IsUsable(monitor); });
  return monitors;
}

std::optional<RECT> FindArea(const wchar_t* device) {
  if (device == nullptr) {
    return std::nullopt;
  }
  const std::string name = EncodeUtf8(device);
  for (const DisplayMonitor& monitor : UsableMonitors()) {
    if (monitor.name == name) {
      return monitor.area;
    }
  }
  return std::nullopt;
}

double SharedArea(const RECT& a, const RECT& b) {
  const RECT shared = Intersect(a, b);
  return IsEmptyArea(shared)
             ? 0
             : static_cast<double>(WidthOf(shared)) * static_cast<double>(HeightOf(shared));
}

double Distance(const RECT& a, const RECT& b) {
  const auto gap = [](LONG aLow, LONG aHigh, LONG bLow, LONG bHigh) {
    return std::max({0.0, static_cast<double>(bLow) - aHigh, static_cast<double>(aLow) - bHigh});
  };
  return std::hypot(gap(a.left, a.right, b.left, b.right), gap(a.top, a.bottom, b.top, b.bottom));
}

// A range counted from the bitmap's or the screen's origin, which may lie anywhere.
struct Range {
  std::int64_t low;
  std::int64_t high;

  // The part within the other span.
  Range Within(std::int64_t otherLow, std::int64_t otherHigh) const {
    return {std::max(low, otherLow), std::min(high, otherHigh)};
  }
  bool IsEmpty() const { return low >= high; }
};

// Copies the screen's `area`, which is not empty, to (left, top) of the bitmap.
bool CopyScreen(const RECT& area, const PixelView& bitmap, std::int64_t left, std::int64_t top) {
  const auto width = static_cast<std::size_t>(WidthOf(area));
  const auto height = static_cast<std::size_t>(HeightOf(area));
  std::vector<std::uint32_t> captured(width * height);
  if (!Capture(area, captured.data())) {
    return false;
  }
  for (std::size_t y = 0; y < height; ++y) {
    const auto row = captured.begin() + static_cast<std::ptrdiff_t>(y * width);
    std::uint32_t* to = bitmap.pixels + (top + static_cast<std::int64_t>(y)) * bitmap.width + left;
    std::transform(row, row + static_cast<std::ptrdiff_t>(width), to,
                   [](std::uint32_t pixel) { return pixel | kBlack; });
  }
  return true;
}

}  // namespace

HDC CreateDCW(const wchar_t* /*driver*/, const wchar_t* device, const wchar_t* /*output*/,
              const DEVMODEW* /*mode*/) {
  const std::optional<RECT> area = FindArea(device);
  HDC context = area ? new (std::nothrow) DeviceContext : nullptr;
  if (context != nullptr) {
    context->displayArea = *area;
  }
  return context;
}

BOOL EnumDisplaySettingsW(const wchar_t* device, DWORD modeNumber, DEVMODEW* mode) {
  const std::optional<RECT> area = FindArea(device);
  if (!area || modeNumber != ENUM_CURRENT_SETTINGS) {
    return 0;
  }
  mode->dmPelsWidth = static_cast<DWORD>(WidthOf(*area));
  mode->dmPelsHeight = static_cast<DWORD>(HeightOf(*area));
  return 1;
}

HMONITOR MonitorFromRect(const RECT* area, DWORD /*flags*/) {
  const std::vector<DisplayMonitor> monitors = UsableMonitors();
  const auto nearest = std::min_element(
      monitors.begin(), monitors.end(), [area](const DisplayMonitor& a, const DisplayMonitor& b) {
        const double sharedA = SharedArea(a.area, *area);
        const double sharedB = SharedArea(b.area, *area);
        return sharedA != sharedB ? sharedA > sharedB
                                  : Distance(a.area, *area) < Distance(b.area, *area);
      });
  // A handle is a place in the list, counted from 1.
  return nearest != monitors.end()
             ? reinterpret_cast<HMONITOR>(std::distance(monitors.begin(), nearest) + 1)
             : nullptr;
}

BOOL GetMonitorInfoW(HMONITOR monitor, MONITORINFO* info) {
  const std::vector<DisplayMonitor> monitors = UsableMonitors();
  const auto place = reinterpret_cast<std::uintptr_t>(monitor);
  if (place < 1 || place > monitors.size() || info->cbSize != sizeof(MONITORINFOEXW)) {
    return 0;
  }
  const DisplayMonitor& found = monitors[place - 1];
  auto* extended = static_cast<MONITORINFOEXW*>(info);
  extended->rcMonitor = found.area;
  const std::wstring name = DecodeUtf8(found.name).substr(0, std::size(extended->szDevice) - 1);
  std::fill(std::begin(extended->szDevice), std::end(extended->szDevice), L'\0');
  std::copy(name.begin(), name.end(), extended->szDevice);
  return 1;
}

BOOL BitBlt(HDC destination, int x, int y, int width, int height, HDC source, int sourceX,
            int sourceY, DWORD operation) {
  const PixelView bitmap = GetPixels(destination);
  if (bitmap.pixels == nullptr || source == nullptr || IsEmptyArea(source->displayArea) ||
      width < 1 || height < 1 || operation != (SRCCOPY | CAPTUREBLT)) {
    return 0;
  }
  const RECT& display = source->displayArea;
  const Range columns = Range{x, std::int64_t{x} + width}.Within(0, bitmap.width);
  const Range rows = Range{y, std::int64_t{y} + height}.Within(0, bitmap.height);
  destination->selected->BeginChange();
  if (!columns.IsEmpty() && !rows.IsEmpty()) {
    destination->selected->changed.push_back(
        {static_cast<LONG>(columns.low), static_cast<LONG>(rows.low),
         static_cast<LONG>(columns.high), static_cast<LONG>(rows.high)});
  }
  for (std::int64_t row = rows.low; row < rows.high && !columns.IsEmpty(); ++row) {
    std::fill_n(bitmap.pixels + row * bitmap.width + columns.low, columns.high - columns.low,
                kBlack);
  }
  // Add these to the bitmap's coordinates to get the screen's.
  const std::int64_t right = std::int64_t{display.left} + sourceX - x;
  const std::int64_t down = std::int64_t{display.top} + sourceY - y;
  const Range left =
      Range{columns.low + right, columns.high + right}.Within(display.left, display.right);
  const Range top = Range{rows.low + down, rows.high + down}.Within(display.top, display.bottom);
  if (left.IsEmpty() || top.IsEmpty()) {
    return 1;
  }
  const RECT area = {static_cast<LONG>(left.low), static_cast<LONG>(top.low),
                     static_cast<LONG>(left.high), static_cast<LONG>(top.high)};
  return CopyScreen(area, bitmap, left.low - right, top.low - down) ? 1 : 0;
}
