// Asks for a window on a display that is not there.
#include <cstdio>

#include <parchlet/x11/X11Display.h>
#include <parchlet/x11/X11Overlay.h>
#include <parchlet/x11/X11Window.h>

int main() {
  const X11Overlay overlay(":65000", {0, 0, 100, 50});
  const X11Window window(":65000", 1);
  const X11Display display(":65000");
  std::puts(overlay.GetError().c_str());
  return overlay.Handle() == nullptr && window.Handle() == nullptr && display.GetMonitors().empty()
             ? 0
             : 1;
}
