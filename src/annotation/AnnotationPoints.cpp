#include <parchlet/Annotation.h>

#include <utility>

#include "annotation/AnnotationState.h"

void Annotation::AddPoint(AnnotationPoint point) {
  MutexLock lock(state->mutex);
  state->points.Add(point, state->Kind().keepsTwoPoints);
  state->PublishReach();
}

void Annotation::InsertPoints(unsigned int subModel, std::vector<AnnotationPoint> newPoints) {
  SubModels fresh;
  fresh.emplace(subModel, std::move(newPoints));
  MutexLock lock(state->mutex);
  state->points.Merge(fresh);
  state->PublishReach();
}

void Annotation::ClearPoints() {
  SubModels none;
  MutexLock lock(state->mutex);
  state->points.SetAll(none);
  state->PublishReach();
}

Annotation::SubModels Annotation::GetPoints() const {
  MutexLock lock(state->mutex);
  return state->points.All();
}

int Annotation::IsSubModelExist(unsigned int subModel) const {
  MutexLock lock(state->mutex);
  return state->points.All().contains(subModel) ? 1 : 0;
}

void Annotation::StartMoving(AnnotationPoint point) {
  MutexLock lock(state->mutex);
  state->moveOrigin = point;
}

void Annotation::Moving(AnnotationPoint point) {
  MutexLock lock(state->mutex);
  const double dx = point.xRatio - state->moveOrigin.xRatio;
  const double dy = point.yRatio - state->moveOrigin.yRatio;
  state->moveOrigin = point;
  state->points.Shift(dx, dy);
}
