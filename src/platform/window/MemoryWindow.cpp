#include <parchlet/MemoryWindow.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include <parchlet/LayeredWindow.h>

struct MemoryWindow::State final : LayeredWindow {
  explicit State(const RECT& screenRect) : screenRect(screenRect) {
    handle = RegisterLayeredWindow(*this);
  }

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
    const auto columns = static_cast<std::size_t>(pushed.width);
    frame.width = pushed.width;
    frame.height = pushed.height;
    frame.pixels.resize(columns * static_cast<std::size_t>(pushed.height));
    for (int y = 0; y < pushed.height; ++y) {
      const std::uint32_t* row = pushed.pixels + y * (pushed.stride / 4);
      std::copy_n(row, columns, frame.pixels.data() + static_cast<std::size_t>(y) * columns);
    }
  }

  HWND handle = nullptr;
  mutable std::mutex mutex;  // guards what follows
  mutable std::condition_variable presented;
  RECT screenRect;
  std::uint64_t presentCount = 0;
  MemoryFrame frame;
};

MemoryWindow::MemoryWindow(const RECT& screenRect) : state(std::make_unique<State>(screenRect)) {}

MemoryWindow::~MemoryWindow() {
  UnregisterLayeredWindow(state->handle);
}

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
