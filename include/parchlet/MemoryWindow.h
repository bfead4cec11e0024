// MemoryWindow.h - off Windows: a layered window in memory, for servers, tests and demos.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <parchlet/Platform.h>

#if !defined(_WIN32)

// A copy of a window's content: width * height pixels, premultiplied 0xAARRGGBB, row by row, top
// row first.
struct MemoryFrame {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// A window that keeps the last frame pushed to it. Its handle is valid while it lives; the
// destructor waits for a push under way. Every function may be called from any thread. The
// constructor and CopyFrame throw std::bad_alloc if memory runs out.
class PARCHLET_API MemoryWindow {
 public:
  // Makes a window at `screenRect` of the desktop in memory (Display.h), above those that exist.
  // Its size is the size of its frames.
  explicit MemoryWindow(const RECT& screenRect);
  ~MemoryWindow();
  MemoryWindow(const MemoryWindow&) = delete;
  MemoryWindow& operator=(const MemoryWindow&) = delete;

  // Returns the handle for Parchlet::NewPage; never null.
  HWND Handle() const;

  // Moves and resizes the window. It keeps its content until the next push.
  void SetScreenRect(const RECT& screenRect);

  // Returns how many frames were pushed so far.
  std::uint64_t PresentCount() const;

  // Waits until PresentCount() >= count; returns false if `timeoutMs` milliseconds pass first.
  bool WaitForPresent(std::uint64_t count, int timeoutMs) const;

  // Returns a copy of the last frame pushed; 0 x 0 before the first.
  MemoryFrame CopyFrame() const;

 private:
  struct State;
  std::unique_ptr<State> state;
};

#endif
