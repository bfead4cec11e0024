// ContentWindow.h - a page's frames over the page's content.
#pragma once

#include <cstdint>
#include <vector>

#include <parchlet/LayeredWindow.h>
#include <parchlet/Mutex.h>

#include "Content.h"

namespace whiteboard {

// Blends every frame over the content and hands the result, which is opaque, to another window: a
// transparent page looks the same with and without a compositor, and inside another window.
//
// The other window is not owned and outlives this one. The refresh thread calls Present, the host
// thread the rest.
class ContentWindow final : public LayeredWindow {
 public:
  explicit ContentWindow(LayeredWindow& target);
  ~ContentWindow();
  ContentWindow(const ContentWindow&) = delete;
  ContentWindow& operator=(const ContentWindow&) = delete;

  HWND Handle() const { return handle; }

  // Puts another content under the frames; one of another size than theirs is not shown.
  void SetContent(Raster newContent) PARCHLET_EXCLUDES(mutex);

  RECT GetScreenRect() const override { return target.GetScreenRect(); }
  bool Present(const LayeredFrame& frame) override PARCHLET_EXCLUDES(mutex);

 private:
  void Resize(int width, int height) PARCHLET_REQUIRES(mutex);
  bool IsSameRow(const LayeredFrame& frame, const RECT& area, LONG y) const
      PARCHLET_REQUIRES(mutex);
  // Keeps the rows in the middle that differ from the frame before; an empty area when none does.
  RECT Narrow(const LayeredFrame& frame, RECT area) const PARCHLET_REQUIRES(mutex);
  void Take(const LayeredFrame& frame, const RECT& area) PARCHLET_REQUIRES(mutex);
  void Blend(const RECT& area) PARCHLET_REQUIRES(mutex);
  bool Show(const std::vector<RECT>& changed) PARCHLET_REQUIRES(mutex);

  LayeredWindow& target;
  HWND handle;
  Mutex mutex;
  Raster content PARCHLET_GUARDED_BY(mutex);
  Raster ink PARCHLET_GUARDED_BY(mutex);    // the last frame, with its alpha
  Raster shown PARCHLET_GUARDED_BY(mutex);  // the two, blended
};

}  // namespace whiteboard
