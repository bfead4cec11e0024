#include "platform/window/Window.h"

#include <algorithm>
#include <condition_variable>
#include <cstring>
#include <map>
#include <memory>
#include <vector>

#include <parchlet/Mutex.h>

namespace {

constexpr std::int64_t kMaxSide = 32767;

// A registered window. `users` counts the calls into it under way; it is guarded by the registry's
// lock. The rest belongs to the one refresh thread that pushes to it.
struct Registration {
  explicit Registration(LayeredWindow& window) : window(window) {}

  LayeredWindow& window;
  int users = 0;
  bool closed = false;
  std::vector<std::uint32_t> padded;  // a frame larger than the surface, kept for the next push
};

// Every window of the process, by handle. A handle is a number that is never given out twice, so a
// stale one finds nothing.
class Registry {
 public:
  HWND Add(LayeredWindow& window) {
    MutexLock lock(mutex);
    const HWND handle = reinterpret_cast<HWND>(++lastHandle);
    windows.emplace(handle, std::make_shared<Registration>(window));
    return handle;
  }

  void Remove(HWND handle) {
    std::unique_lock<std::mutex> lock(mutex);
    RemoveAndWait(handle, lock);
  }

  bool Holds(HWND handle) {
    MutexLock lock(mutex);
    return windows.contains(handle);
  }

  std::shared_ptr<Registration> Enter(HWND handle) {
    MutexLock lock(mutex);
    const auto found = windows.find(handle);
    if (found == windows.end()) {
      return nullptr;
    }
    ++found->second->users;
    return found->second;
  }

  void Leave(Registration& registration) {
    MutexLock lock(mutex);
    if (--registration.users == 0 && registration.closed) {
      left.notify_all();
    }
  }

 private:
  // The analysis does not follow a lock through std::unique_lock, which the wait needs.
  void RemoveAndWait(HWND handle, std::unique_lock<std::mutex>& lock)
      PARCHLET_THREAD_ATTRIBUTE(no_thread_safety_analysis) {
    const auto found = windows.find(handle);
    if (found == windows.end()) {
      return;
    }
    const std::shared_ptr<Registration> registration = found->second;
    windows.erase(found);
    registration->closed = true;
    left.wait(lock, [&] { return registration->users == 0; });
  }

  Mutex mutex;
  std::condition_variable left;
  std::uintptr_t lastHandle PARCHLET_GUARDED_BY(mutex) = 0;
  std::map<HWND, std::shared_ptr<Registration>> windows PARCHLET_GUARDED_BY(mutex);
};

Registry& Windows() {
  // Never destroyed: a host's static window may outlive every other static object.
  static Registry& registry = *new Registry;
  return registry;
}

// A call into a window under way; its unregistering waits for the end. No lock is held meanwhile.
class WindowUse {
 public:
  explicit WindowUse(HWND handle) : registration(Windows().Enter(handle)) {}
  ~WindowUse() {
    if (registration != nullptr) {
      Windows().Leave(*registration);
    }
  }
  WindowUse(const WindowUse&) = delete;
  WindowUse& operator=(const WindowUse&) = delete;

  Registration* Get() const { return registration.get(); }

 private:
  std::shared_ptr<Registration> registration;
};

HDC WindowContext() {
  static DeviceContext context;
  return &context;
}

// The surface's rows in a buffer of the window's size, transparent past the surface.
const std::uint32_t* Pad(const PixelView& surface, int width, int height,
                         std::vector<std::uint32_t>& padded) {
  const auto columns = static_cast<std::size_t>(width);
  padded.assign(columns * static_cast<std::size_t>(height), 0);
  const auto shared = static_cast<std::size_t>(std::min(width, surface.width));
  for (int y = 0; y < std::min(height, surface.height); ++y) {
    const auto row = static_cast<std::size_t>(y);
    std::memcpy(padded.data() + row * columns,
                surface.pixels + row * static_cast<std::size_t>(surface.width),
                shared * sizeof(std::uint32_t));
  }
  return padded.data();
}

bool Push(Registration& registration, const PixelView& surface, int width, int height) {
  LayeredFrame frame{};
  frame.width = width;
  frame.height = height;
  if (width <= surface.width && height <= surface.height) {
    frame.pixels = surface.pixels;
    frame.stride = surface.StrideBytes();
    std::vector<std::uint32_t>().swap(registration.padded);
  } else {
    frame.pixels = Pad(surface, width, height, registration.padded);
    frame.stride = static_cast<std::ptrdiff_t>(width) * 4;
  }
  const RECT whole = {0, 0, width, height};
  frame.changed = &whole;
  frame.changedCount = 1;
  return registration.window.Present(frame);
}

}  // namespace

HWND RegisterLayeredWindow(LayeredWindow& window) {
  return Windows().Add(window);
}

void UnregisterLayeredWindow(HWND handle) {
  Windows().Remove(handle);
}

HDC GetDC(HWND window) {
  return IsWindow(window) != 0 ? WindowContext() : nullptr;
}

int ReleaseDC(HWND /*window*/, HDC dc) {
  return dc != nullptr ? 1 : 0;
}

BOOL IsWindow(HWND window) {
  return Windows().Holds(window) ? 1 : 0;
}

BOOL GetWindowRect(HWND window, RECT* rect) {
  const WindowUse use(window);
  if (use.Get() == nullptr) {
    return 0;
  }
  *rect = use.Get()->window.GetScreenRect();
  return 1;
}

BOOL UpdateLayeredWindow(HWND window, HDC /*destination*/, POINT* /*position*/, SIZE* size,
                         HDC source, POINT* /*sourcePoint*/, COLORREF /*key*/,
                         BLENDFUNCTION* /*blend*/, DWORD /*flags*/) {
  const WindowUse use(window);
  const PixelView surface = GetPixels(source);
  if (use.Get() == nullptr || surface.pixels == nullptr || size->cx < 1 || size->cy < 1 ||
      size->cx > kMaxSide || size->cy > kMaxSide) {
    return 0;
  }
  return Push(*use.Get(), surface, size->cx, size->cy) ? 1 : 0;
}
