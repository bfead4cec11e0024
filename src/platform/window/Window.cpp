#include "platform/window/Window.h"

#include <algorithm>
#include <condition_variable>
#include <map>
#include <memory>
#include <vector>

#include "platform/threads/Mutex.h"

namespace {

// The frame that a window shows.
struct ShownFrame {
  std::uint64_t serial = 0;  // of its section; 0: none
  std::uint64_t version = 0;
  int width = 0;
  int height = 0;
};

// A registered window. `users` counts the calls into it under way; it and `closed` are guarded by
// the registry's lock. Two engines that show pages on one window take turns.
struct Registration {
  explicit Registration(LayeredWindow& window) : window(window) {}

  LayeredWindow& window;
  int users = 0;
  bool closed = false;
  Mutex pushing;
  ShownFrame shown PARCHLET_GUARDED_BY(pushing);
  std::vector<RECT> changed PARCHLET_GUARDED_BY(pushing);
  // A frame larger than the surface, kept for the next push.
  std::vector<std::uint32_t> padded PARCHLET_GUARDED_BY(pushing);
};

// Every window of the process, by handle. A handle is a number that is used once, so a stale one
// finds nothing.
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

// A call into a window under way. Unregistering the window waits for its end; the registry's lock
// is not held meanwhile.
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

// Copies the surface's rows within `area` into a buffer of the window's size.
void CopyArea(const PixelView& surface, const RECT& area, int width,
              std::vector<std::uint32_t>& padded) {
  const int right = std::min<int>(area.right, surface.width);
  for (int y = area.top; y < std::min<int>(area.bottom, surface.height); ++y) {
    if (area.left < right) {
      std::copy_n(surface.pixels + std::ptrdiff_t{y} * surface.width + area.left, right - area.left,
                  padded.data() + std::ptrdiff_t{y} * width + area.left);
    }
  }
}

// Finds the rectangles of a window's frame that differ from the frame that it shows.
void FindChanged(Registration& registration, const PixelSection& section, int width, int height)
    PARCHLET_REQUIRES(registration.pushing) {
  std::vector<RECT>& changed = registration.changed;
  changed.clear();
  const ShownFrame shown = registration.shown;
  const bool known =
      shown.serial == section.serial && shown.width == width && shown.height == height;
  if (!known || section.version > shown.version + 1) {
    changed.push_back({0, 0, width, height});
  } else if (section.version > shown.version) {
    for (const RECT& area : section.changed) {
      const RECT seen = {area.left, area.top, std::min<LONG>(area.right, width),
                         std::min<LONG>(area.bottom, height)};
      if (seen.left < seen.right && seen.top < seen.bottom) {
        changed.push_back(seen);
      }
    }
  }
}

// Updates the buffer that is pushed when the surface is smaller than the window. Past the surface
// it is transparent.
void UpdatePadded(Registration& registration, const PixelView& surface, int width, int height)
    PARCHLET_REQUIRES(registration.pushing) {
  std::vector<std::uint32_t>& padded = registration.padded;
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  const ShownFrame shown = registration.shown;
  if (padded.size() != count || shown.width != width || shown.serial == 0) {
    padded.assign(count, 0);
    CopyArea(surface, {0, 0, width, height}, width, padded);
    return;
  }
  for (const RECT& area : registration.changed) {
    CopyArea(surface, area, width, padded);
  }
}

// A host's window may throw, which must not end the refresh thread: the frame was not shown.
bool Present(LayeredWindow& window, const LayeredFrame& frame) {
  try {
    return window.Present(frame);
  } catch (...) {
    return false;
  }
}

bool Push(Registration& registration, const PixelSection& section, int width, int height) {
  const PixelView surface = {section.pixels.get(), section.width, section.height};
  MutexLock lock(registration.pushing);
  FindChanged(registration, section, width, height);
  LayeredFrame frame{};
  frame.width = width;
  frame.height = height;
  if (width <= surface.width && height <= surface.height) {
    frame.pixels = surface.pixels;
    frame.stride = surface.StrideBytes();
    std::vector<std::uint32_t>().swap(registration.padded);
  } else {
    if (registration.shown.serial != section.serial) {
      registration.padded.clear();
    }
    UpdatePadded(registration, surface, width, height);
    frame.pixels = registration.padded.data();
    frame.stride = static_cast<std::ptrdiff_t>(width) * 4;
  }
  frame.changed = registration.changed.data();
  frame.changedCount = registration.changed.size();
  // Unknown until the window took the frame.
  registration.shown = {};
  if (!Present(registration.window, frame)) {
    return false;
  }
  registration.shown = {section.serial, section.version, width, height};
  return true;
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
  try {
    *rect = use.Get()->window.GetScreenRect();
  } catch (...) {
    return 0;
  }
  return 1;
}

BOOL UpdateLayeredWindow(HWND window, HDC /*destination*/, POINT* /*position*/, SIZE* size,
                         HDC source, POINT* /*sourcePoint*/, COLORREF /*key*/,
                         BLENDFUNCTION* /*blend*/, DWORD /*flags*/) {
  const WindowUse use(window);
  const PixelView surface = GetPixels(source);
  if (use.Get() == nullptr || surface.pixels == nullptr || !IsUsableSize(size->cx, size->cy)) {
    return 0;
  }
  return Push(*use.Get(), *source->selected, size->cx, size->cy) ? 1 : 0;
}
