#include <parchlet/MemoryWindow.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>

#include <parchlet/LayeredWindow.h>

#include "platform/display/DesktopLayers.h"
#include "platform/display/ScreenArea.h"
#include "platform/threads/WorkerPool.h"

namespace {

std::uint32_t BlendPixel(std::uint32_t over, std::uint32_t under) {
  const std::uint32_t rest = 255 - (over >> 24);
  const auto channel = [=](int shift) {
    const std::uint32_t sum = (over >> shift & 0xFF) + ((under >> shift & 0xFF) * rest + 127) / 255;
    return std::min<std::uint32_t>(sum, 255) << shift;
  };
  return channel(24) | channel(16) | channel(8) | channel(0);
}

// The copying of one area. Threads share it by a reference, so handing it over needs no memory.
struct AreaCopy {
  const LayeredFrame& from;
  const RECT& area;
  MemoryFrame& to;

  void CopyRows(LONG top, LONG bottom) const {
    for (LONG y = top; y < bottom; ++y) {
      const std::uint32_t* row = from.pixels + y * (from.stride / 4);
      std::copy(row + area.left, row + area.right,
                to.pixels.data() + static_cast<std::ptrdiff_t>(y) * to.width + area.left);
    }
  }
};

}  // namespace

struct MemoryWindow::State final : LayeredWindow, DesktopLayer {
  explicit State(const RECT& screenRect) : screenRect(screenRect) {
    handle = RegisterLayeredWindow(*this);
    try {
      AddDesktopLayer(*this);
    } catch (...) {
      UnregisterLayeredWindow(handle);
      throw;
    }
  }
  ~State() {
    RemoveDesktopLayer(*this);
    UnregisterLayeredWindow(handle);
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  RECT GetScreenRect() const override {
    const std::lock_guard lock(mutex);
    return screenRect;
  }

  bool Present(const LayeredFrame& pushed) override {
    {
      const std::lock_guard lock(mutex);
      Copy(pushed);
      ++presentCount;
    }
    presented.notify_all();
    return true;
  }

  void Copy(const LayeredFrame& pushed) {
    if (frame.width == pushed.width && frame.height == pushed.height) {
      for (std::size_t i = 0; i < pushed.changedCount; ++i) {
        CopyArea(pushed, pushed.changed[i]);
      }
      return;
    }
    // First: if memory runs out, the frame stays as it was.
    frame.pixels.resize(static_cast<std::size_t>(pushed.width) *
                        static_cast<std::size_t>(pushed.height));
    frame.width = pushed.width;
    frame.height = pushed.height;
    CopyArea(pushed, {0, 0, pushed.width, pushed.height});
  }

  // A large area takes longer to copy than other threads take to wake up.
  void CopyArea(const LayeredFrame& pushed, const RECT& area) {
    constexpr std::int64_t kPixelsWorthSharing = 500'000;
    constexpr int kShares = 8;
    const AreaCopy copy = {pushed, area, frame};
    if (std::int64_t{area.right - area.left} * (area.bottom - area.top) < kPixelsWorthSharing) {
      copy.CopyRows(area.top, area.bottom);
    } else {
      pool->Run(kShares, [&copy](int, int share) {
        const LONG height = copy.area.bottom - copy.area.top;
        copy.CopyRows(copy.area.top + height * share / kShares,
                      copy.area.top + height * (share + 1) / kShares);
      });
    }
  }

  void BlendOver(const RECT& area, std::uint32_t* pixels) const override {
    const std::lock_guard lock(mutex);
    const RECT window = screenRect;
    const RECT content = {window.left, window.top,
                          static_cast<LONG>(std::min<std::int64_t>(
                              window.right, std::int64_t{window.left} + frame.width)),
                          static_cast<LONG>(std::min<std::int64_t>(
                              window.bottom, std::int64_t{window.top} + frame.height))};
    const RECT shared = Intersect(area, content);
    for (LONG y = shared.top; y < shared.bottom && shared.left < shared.right; ++y) {
      const auto row = static_cast<std::size_t>(std::int64_t{y} - window.top);
      const auto column = static_cast<std::size_t>(std::int64_t{shared.left} - window.left);
      const std::uint32_t* from =
          frame.pixels.data() + row * static_cast<std::size_t>(frame.width) + column;
      std::uint32_t* to = pixels + OffsetIn(area, shared.left, y);
      std::transform(from, from + WidthOf(shared), to, to, BlendPixel);
    }
  }

  HWND handle = nullptr;
  const std::shared_ptr<WorkerPool> pool = WorkerPool::Shared();
  mutable std::mutex mutex;  // guards what follows
  mutable std::condition_variable presented;
  RECT screenRect;
  std::uint64_t presentCount = 0;
  MemoryFrame frame;
};

MemoryWindow::MemoryWindow(const RECT& screenRect) : state(std::make_unique<State>(screenRect)) {}

MemoryWindow::~MemoryWindow() = default;

HWND MemoryWindow::Handle() const {
  return state->handle;
}

void MemoryWindow::SetScreenRect(const RECT& screenRect) {
  const std::lock_guard lock(state->mutex);
  state->screenRect = screenRect;
}

std::uint64_t MemoryWindow::PresentCount() const {
  const std::lock_guard lock(state->mutex);
  return state->presentCount;
}

bool MemoryWindow::WaitForPresent(std::uint64_t count, int timeoutMs) const {
  std::unique_lock lock(state->mutex);
  return state->presented.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                                   [&] { return state->presentCount >= count; });
}

MemoryFrame MemoryWindow::CopyFrame() const {
  const std::lock_guard lock(state->mutex);
  return state->frame;
}
