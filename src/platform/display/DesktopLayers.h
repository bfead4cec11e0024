// The windows that the desktop in memory shows over its background.
#pragma once

#include <cstdint>

#include <parchlet/Platform.h>

// A window whose content the desktop in memory shows while it is added.
class DesktopLayer {
 public:
  // Blends the window's content over `pixels`, which show `area` of the screen: premultiplied, row
  // by row. `area` is not empty. Any thread.
  virtual void BlendOver(const RECT& area, std::uint32_t* pixels) const = 0;

 protected:
  ~DesktopLayer() = default;
};

// Puts a layer on top of all others. Not owned. Any thread.
void AddDesktopLayer(const DesktopLayer& layer);
// Removes a layer; waits for a use of it under way. Any thread.
void RemoveDesktopLayer(const DesktopLayer& layer);

// Blends all layers over `pixels`, from the lowest to the topmost. Any thread.
void BlendDesktopLayers(const RECT& area, std::uint32_t* pixels);
