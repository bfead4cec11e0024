// ContentWindow.h - a page's frames over the page's content.
#pragma once

#include <cstdint>
#include <mutex>
#include <vector>

#include <parchlet/LayeredWindow.h>

#include "whiteboard/Content.h"

namespace whiteboard {

// Blends every frame over the content and passes the opaque result on to another window. A
// transparent page then looks the same with and without a compositor.
//
// The other window is not owned and must outlive this one. The refresh thread calls Present, the
// host thread everything else.
class ContentWindow final : public LayeredWindow {
 public:
  explicit ContentWindow(LayeredWindow& target);
  ~ContentWindow();
  ContentWindow(const ContentWindow&) = delete;
  ContentWindow& operator=(const ContentWindow&) = delete;

  HWND Handle() const { return handle; }

  // Replaces the content. Content of another size than the frames is not shown.
  void SetContent(parchlet::Picture newContent);

  RECT GetScreenRect() const override { return target.GetScreenRect(); }
  bool Present(const LayeredFrame& frame) override;

 private:
  void Resize(int width, int height);
  bool IsSameRow(const LayeredFrame& frame, const RECT& area, LONG y) const;
  // Returns the part of the area, whole rows, that differs from the last frame; empty when nothing
  // does.
  RECT Narrow(const LayeredFrame& frame, RECT area) const;
  void Take(const LayeredFrame& frame, const RECT& area);
  void Blend(const RECT& area);
  bool Show(const std::vector<RECT>& changed);

  LayeredWindow& target;
  HWND handle;
  std::mutex mutex;  // guards the pictures; held during the other window's Present
  parchlet::Picture content;
  parchlet::Picture ink;    // the last frame, with its alpha
  parchlet::Picture shown;  // both blended
};

}  // namespace whiteboard
