// Windows in memory. Not built on Windows, where the system's own windows are used.
#include <algorithm>

#include <parchlet/MemoryWindow.h>

#include "c/Call.h"

struct ParchletWindow {
  explicit ParchletWindow(const RECT& screenRect) : window(screenRect) {}
  MemoryWindow window;
};

namespace {

RECT RectOf(const ParchletRect& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

}  // namespace

ParchletWindow* ParchletWindowNew(const ParchletRect* screenRect) {
  if (screenRect == nullptr) {
    return nullptr;
  }
  return OrNull([&] { return new ParchletWindow(RectOf(*screenRect)); });
}

void ParchletWindowFree(ParchletWindow* window) {
  delete window;
}

void* ParchletWindowHandle(const ParchletWindow* window) {
  return window != nullptr ? window->window.Handle() : nullptr;
}

int32_t ParchletWindowSetScreenRect(ParchletWindow* window, const ParchletRect* screenRect) {
  if (window == nullptr || screenRect == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return Guarded([&] { window->window.SetScreenRect(RectOf(*screenRect)); });
}

uint64_t ParchletWindowPresentCount(const ParchletWindow* window) {
  std::uint64_t count = 0;
  Guarded([&] { count = window != nullptr ? window->window.PresentCount() : 0; });
  return count;
}

int32_t ParchletWindowWaitForPresent(const ParchletWindow* window, uint64_t count,
                                     int32_t timeoutMs) {
  if (window == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return Guarded(
      [&] { return window->window.WaitForPresent(count, timeoutMs) ? PARCHLET_YES : PARCHLET_NO; });
}

int32_t ParchletWindowCopyFrame(const ParchletWindow* window, uint32_t* pixels, size_t capacity,
                                int32_t* width, int32_t* height) {
  if (window == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return Guarded([&] {
    const MemoryFrame frame = window->window.CopyFrame();
    Write<int32_t>(width, frame.width);
    Write<int32_t>(height, frame.height);
    if (pixels == nullptr || frame.pixels.size() > capacity) {
      return PARCHLET_NO;
    }
    std::copy(frame.pixels.begin(), frame.pixels.end(), pixels);
    return PARCHLET_YES;
  });
}
