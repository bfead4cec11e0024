// MemoryWindow.h - off Windows: a layered window in memory, for servers, tests and demos.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <parchlet/Platform.h>

#if !defined(_WIN32)

// A copy of a window's content: premultiplied 0xAARRGGBB, row by row, top row first, width * height
// of them.
struct MemoryFrame {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// A window that keeps the last frame pushed to it. Its handle is registered for as long as it
// lives; destroying it waits for a push under way. Every function may be called from any thread.
// The constructor and CopyFrame throw std::bad_alloc when memory runs out.
class PARCHLET_API MemoryWindow {
 public:
  // Makes a window there on the desktop in memory (Display.h); its size is that of the frames.
  explicit MemoryWindow(const RECT& screenRect);
  ~MemoryWindow();
  MemoryWindow(const MemoryWindow&) = delete;
  MemoryWindow& operator=(const MemoryWindow&) = delete;

  // The handle to give to Parchlet::NewPage; never null.
  HWND Handle() const;

  // Moves and resizes the window; its content keeps until the next push.
  void SetScreenRect(const RECT& screenRect);

  // Frames pushed so far.
  std::uint64_t PresentCount() const;

  // Waits until PresentCount() >= count; false when `timeoutMs` milliseconds passed before.
  bool WaitForPresent(std::uint64_t count, int timeoutMs) const;

  // The last frame pushed; 0 x 0 before the first.
  MemoryFrame CopyFrame() const;

 private:
  struct State;
  std::unique_ptr<State> state;
};

#endif
