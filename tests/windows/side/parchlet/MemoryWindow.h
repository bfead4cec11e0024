// What the layer's windows are to tests, on Windows: the system's own, whose pushes a test sees.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <parchlet/Platform.h>

struct MemoryFrame {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// A layered window of the system, never shown. What is pushed to it reaches the system first; a
// push that the system took is copied. Any thread.
class MemoryWindow {
 public:
  explicit MemoryWindow(const RECT& area);
  ~MemoryWindow();
  MemoryWindow(const MemoryWindow&) = delete;
  MemoryWindow& operator=(const MemoryWindow&) = delete;

  HWND Handle() const { return handle; }
  void SetScreenRect(const RECT& area);
  std::uint64_t PresentCount() const;
  bool WaitForPresent(std::uint64_t count, int timeoutMs) const;
  MemoryFrame CopyFrame() const;
  // Calls `act` at the start of every push, on the thread that pushes.
  void BeforePush(std::function<void()> act);

 private:
  HWND handle;
};

// Ends a window before its time.
void UnregisterLayeredWindow(HWND handle);
