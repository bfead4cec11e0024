#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>

#include <parchlet/MemoryWindow.h>

#include "platform/gdi/DevicePixels.h"

namespace {

struct Pushed {
  std::uint64_t count = 0;
  MemoryFrame frame;
  std::function<void()> before;
};

std::mutex mutex;  // guards what follows
std::condition_variable arrived;
std::map<HWND, Pushed> pushes;

using Update = decltype(&UpdateLayeredWindowIndirect);

Update SystemsUpdate() {
  static const auto update = reinterpret_cast<Update>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"user32"), "UpdateLayeredWindowIndirect")));
  return update;
}

// The part of the surface that the window shows, which is all of it: the system refuses less.
MemoryFrame CopyShown(HWND window, HDC surface) {
  RECT area{};
  GetWindowRect(window, &area);
  const PixelView view = DevicePixels(surface).View();
  MemoryFrame frame = {area.right - area.left, area.bottom - area.top, {}};
  if (frame.width > view.width || frame.height > view.height) {
    return {};
  }
  frame.pixels.reserve(static_cast<std::size_t>(frame.width) *
                       static_cast<std::size_t>(frame.height));
  for (int y = 0; y < frame.height; ++y) {
    const std::uint32_t* row = view.pixels + std::ptrdiff_t{y} * view.width;
    frame.pixels.insert(frame.pixels.end(), row, row + frame.width);
  }
  return frame;
}

// What the window shows afterwards: outside of the dirty rectangle what it showed before.
void Take(MemoryFrame& frame, const MemoryFrame& pushed, const RECT* dirty) {
  const bool isPart = dirty != nullptr && frame.width == pushed.width &&
                      frame.pixels.size() == pushed.pixels.size();
  if (!isPart) {
    frame = pushed;
    return;
  }
  for (int y = dirty->top; y < dirty->bottom; ++y) {
    const std::ptrdiff_t row = std::ptrdiff_t{y} * frame.width;
    std::copy(pushed.pixels.begin() + row + dirty->left, pushed.pixels.begin() + row + dirty->right,
              frame.pixels.begin() + row + dirty->left);
  }
}

BOOL WINAPI SeenUpdate(HWND window, const UPDATELAYEREDWINDOWINFO* info) {
  {
    std::unique_lock lock(mutex);
    const std::function<void()> before = pushes[window].before;
    lock.unlock();
    if (before) {
      before();
    }
  }
  const BOOL isShown = SystemsUpdate()(window, info);
  if (isShown != FALSE) {
    const std::lock_guard lock(mutex);
    Pushed& pushed = pushes[window];
    Take(pushed.frame, CopyShown(window, info->hdcSrc), info->prcDirty);
    ++pushed.count;
    arrived.notify_all();
  }
  return isShown;
}

}  // namespace

// The linker takes it for the pointer of the system's import library.
extern "C" Update __imp_UpdateLayeredWindowIndirect;
Update __imp_UpdateLayeredWindowIndirect = SeenUpdate;

MemoryWindow::MemoryWindow(const RECT& area)
    : handle(CreateWindowExW(WS_EX_LAYERED, L"STATIC", L"", WS_POPUP, area.left, area.top,
                             area.right - area.left, area.bottom - area.top, nullptr, nullptr,
                             GetModuleHandleW(nullptr), nullptr)) {}

MemoryWindow::~MemoryWindow() {
  UnregisterLayeredWindow(handle);
  const std::lock_guard lock(mutex);
  pushes.erase(handle);
}

void MemoryWindow::SetScreenRect(const RECT& area) {
  SetWindowPos(handle, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

std::uint64_t MemoryWindow::PresentCount() const {
  const std::lock_guard lock(mutex);
  return pushes[handle].count;
}

bool MemoryWindow::WaitForPresent(std::uint64_t count, int timeoutMs) const {
  std::unique_lock lock(mutex);
  return arrived.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                          [&] { return pushes[handle].count >= count; });
}

MemoryFrame MemoryWindow::CopyFrame() const {
  const std::lock_guard lock(mutex);
  return pushes[handle].frame;
}

void MemoryWindow::BeforePush(std::function<void()> act) {
  const std::lock_guard lock(mutex);
  pushes[handle].before = std::move(act);
}

void UnregisterLayeredWindow(HWND handle) {
  if (IsWindow(handle) != 0) {
    DestroyWindow(handle);
  }
}
