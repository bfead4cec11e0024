#include <parchlet/Annotation.h>

#include "annotation/AnnotationState.h"

namespace {

constexpr Gdiplus::ARGB kFrameColor = 0xFF939393;

// Widens an extent of less than two pixels by one on each side.
void GiveExtent(LONG& low, LONG& high) {
  if (std::int64_t{high} - low < 2) {
    low = SaturatingPixel(std::int64_t{low} - 1);
    high = SaturatingPixel(std::int64_t{high} + 1);
  }
}

}  // namespace

int Annotation::Draw(parchlet::graphics::Graphics* graphics, CurrentAnnotPageSize size,
                     bool /*lock*/) {
  if (graphics == nullptr) {
    return 0;
  }
  state->Paint(*graphics, size);
  return 1;
}

bool Annotation::State::Paint(Gdiplus::Graphics& graphics, CurrentAnnotPageSize size) {
  MutexLock lock(mutex);
  if (points.HasTwo()) {
    try {
      Kind().draw(points, {header.pen, picture.get()}, graphics, size);
    } catch (...) {
      PublishReach();  // pixels may have changed before memory ran out
      throw;
    }
    if (points.TakeChange()) {
      PublishReach();
    }
  }
  return WantsTip();
}

int Annotation::SetRectEx(CurrentAnnotPageSize size) {
  MutexLock lock(state->mutex);
  return state->UpdateFrame(size) ? 1 : 0;
}

bool Annotation::State::UpdateFrame(CurrentAnnotPageSize size) {
  // A mark without points has no frame; with some, it gets a sub-model 0 by asking.
  if (points.All().empty() || !points.EnsureFirst() || !points.HasTwo()) {
    return false;
  }
  frame = ShapeOf(header.subType).framesAllPoints ? points.BoxOn(size) : points.FirstTwoBoxOn(size);
  GiveExtent(frame.left, frame.right);
  GiveExtent(frame.top, frame.bottom);
  PublishReach();
  return true;
}

int Annotation::DrawRectEx(parchlet::graphics::Graphics* graphics, CurrentAnnotPageSize size) {
  if (graphics == nullptr || IsErased() == 1) {
    return 0;
  }
  MutexLock lock(state->mutex);
  if (!state->UpdateFrame(size)) {
    return 0;
  }
  const Gdiplus::Rect box = PaintableRect(state->frame);
  const Gdiplus::Pen outline(Gdiplus::Color(kFrameColor), 1.0F);
  graphics->DrawRectangle(&outline, box.X, box.Y, box.Width, box.Height);
  return 1;
}
