// What the layer's windows are to tests, on Windows.
#pragma once

#include <cstdint>
#include <vector>

#include <parchlet/Platform.h>

struct MemoryFrame {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// A layered window of the system, never shown. The system does not give back what was pushed to it,
// so its frames are empty, and tests that look at pixels are built for the layer alone.
class MemoryWindow {
 public:
  explicit MemoryWindow(const RECT& area)
      : handle(CreateWindowExW(WS_EX_LAYERED, L"STATIC", L"", WS_POPUP, area.left, area.top,
                               area.right - area.left, area.bottom - area.top, nullptr, nullptr,
                               GetModuleHandleW(nullptr), nullptr)) {}
  ~MemoryWindow() {
    if (IsWindow(handle) != 0) {
      DestroyWindow(handle);
    }
  }
  MemoryWindow(const MemoryWindow&) = delete;
  MemoryWindow& operator=(const MemoryWindow&) = delete;

  HWND Handle() const { return handle; }
  MemoryFrame CopyFrame() const { return {}; }

 private:
  HWND handle;
};

// Ends a window before its time.
inline void UnregisterLayeredWindow(HWND handle) {
  DestroyWindow(handle);
}
