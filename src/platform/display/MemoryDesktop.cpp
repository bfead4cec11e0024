#include "platform/threads/Mutex.h"

#include <algorithm>
#include <atomic>

#include "platform/display/CurrentDisplay.h"
#include "platform/display/DesktopLayers.h"
#include "platform/display/ScreenArea.h"

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr RECT kDefaultArea = {0, 0, 1920, 1080};

// Shows a background, and the windows in memory over it.
class MemoryDesktop final : public Display {
 public:
  void LayOut(const std::vector<DisplayMonitor>& newMonitors, const std::uint32_t* pixels,
              const RECT& area) PARCHLET_EXCLUDES(mutex) {
    const bool isEmpty = pixels == nullptr || IsEmptyArea(area);
    const RECT newArea = isEmpty ? RECT{} : area;
    std::vector<std::uint32_t> copy(pixels, pixels + WidthOf(newArea) * HeightOf(newArea));
    MutexLock lock(mutex);
    monitors = newMonitors;
    background.swap(copy);
    backgroundArea = newArea;
  }

  std::vector<DisplayMonitor> GetMonitors() const override PARCHLET_EXCLUDES(mutex) {
    MutexLock lock(mutex);
    return monitors;
  }

  bool Capture(const RECT& area, std::uint32_t* pixels) override PARCHLET_EXCLUDES(mutex) {
    CopyBackground(area, pixels);
    BlendDesktopLayers(area, pixels);
    return true;
  }

 private:
  void CopyBackground(const RECT& area, std::uint32_t* pixels) const PARCHLET_EXCLUDES(mutex) {
    MutexLock lock(mutex);
    std::fill_n(pixels, WidthOf(area) * HeightOf(area), kOpaque);
    const RECT shared = Intersect(area, backgroundArea);
    if (IsEmptyArea(shared)) {
      return;
    }
    for (LONG y = shared.top; y < shared.bottom; ++y) {
      const auto* from = background.data() + OffsetIn(backgroundArea, shared.left, y);
      std::transform(from, from + WidthOf(shared), pixels + OffsetIn(area, shared.left, y),
                     [](std::uint32_t pixel) { return pixel | kOpaque; });
    }
  }

  mutable Mutex mutex;
  std::vector<DisplayMonitor> monitors PARCHLET_GUARDED_BY(mutex) = {{"MEMORY-1", kDefaultArea}};
  std::vector<std::uint32_t> background PARCHLET_GUARDED_BY(mutex);
  RECT backgroundArea PARCHLET_GUARDED_BY(mutex) = {};
};

MemoryDesktop& DesktopInMemory() {
  // Never destroyed: a host's static objects may outlive every other static object.
  static MemoryDesktop& desktop = *new MemoryDesktop;
  return desktop;
}

std::atomic<Display*> displaySet = nullptr;

}  // namespace

Display& CurrentDisplay() {
  Display* display = displaySet.load();
  return display != nullptr ? *display : DesktopInMemory();
}

void SetDisplay(Display* display) {
  displaySet.store(display);
}

void SetMemoryDesktop(const std::vector<DisplayMonitor>& monitors, const std::uint32_t* background,
                      const RECT& backgroundArea) {
  DesktopInMemory().LayOut(monitors, background, backgroundArea);
}
