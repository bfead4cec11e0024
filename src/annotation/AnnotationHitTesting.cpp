#include <parchlet/Annotation.h>

#include "annotation/AnnotationState.h"
#include "annotation/HitShapes.h"

int Annotation::FindAnnotation(const AnnotationPoint& p1, const AnnotationPoint& p2) const {
  MutexLock lock(state->mutex);
  return state->points.HasTwo() &&
                 state->Kind().isCrossed(state->points, pen, StoredPixel(p1), StoredPixel(p2))
             ? 1
             : 0;
}

int Annotation::FindAnnotation(const AnnotationPoint& p, bool useFrame) const {
  MutexLock lock(state->mutex);
  if (!state->points.HasTwo()) {
    return 0;
  }
  const bool isHit = useFrame ? IsInBox(StoredPixel(p), state->frame, 0)
                              : state->Kind().holds(state->points, pen, StoredPixel(p));
  return isHit ? 1 : 0;
}

int Annotation::IsInSelectRect(const RECT& rect) const {
  if (IsErased() == 1) {
    return 0;
  }
  MutexLock lock(state->mutex);
  if (!state->points.HasTwo()) {
    return 0;
  }
  const RECT normal = BoxOf({rect.left, rect.top}, {rect.right, rect.bottom});
  const RECT box =
      state->Kind().framesAllPoints ? state->points.PixelBox() : state->points.FirstTwoBox();
  return Contains(normal, box) ? 1 : 0;
}
