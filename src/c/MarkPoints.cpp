#include <algorithm>

#include "c/Call.h"

namespace {

AnnotationPoint PointOf(const ParchletPoint& point) {
  return {point.x, point.y, point.xRatio, point.yRatio};
}

// Runs an operation that takes a point of the host's.
template <class Operation>
int32_t WithPoint(ParchletMark* mark, const ParchletPoint* point, const Operation& operation) {
  if (point == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnMark(mark, [&](Annotation& annotation) {
    operation(annotation, PointOf(*point));
    return PARCHLET_YES;
  });
}

}  // namespace

int32_t ParchletMarkAddPoint(ParchletMark* mark, const ParchletPoint* point) {
  return WithPoint(mark, point, [](Annotation& annotation, const AnnotationPoint& added) {
    annotation.AddPoint(added);
  });
}

int32_t ParchletMarkInsertPoints(ParchletMark* mark, uint32_t subModel, const ParchletPoint* points,
                                 size_t count) {
  if (points == nullptr && count > 0) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnMark(mark, [&](Annotation& annotation) {
    std::vector<AnnotationPoint> list;
    list.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
      list.push_back(PointOf(points[index]));
    }
    annotation.InsertPoints(subModel, std::move(list));
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkClearPoints(ParchletMark* mark) {
  return OnMark(mark, [](Annotation& annotation) {
    annotation.ClearPoints();
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkGetSubModels(const ParchletMark* mark, uint32_t* subModels, size_t capacity,
                                 size_t* count) {
  Write<std::size_t>(count, 0);
  return OnMark(mark, [&](const Annotation& annotation) {
    const Annotation::SubModels found = annotation.GetPoints();
    std::size_t written = 0;
    for (const auto& [number, points] : found) {
      if (subModels == nullptr || written == capacity) {
        break;
      }
      subModels[written++] = number;
    }
    Write(count, found.size());
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkGetPoints(const ParchletMark* mark, uint32_t subModel, ParchletPoint* points,
                              size_t capacity, size_t* count) {
  Write<std::size_t>(count, 0);
  return OnMark(mark, [&](const Annotation& annotation) {
    const Annotation::SubModels subModels = annotation.GetPoints();
    const auto found = subModels.find(subModel);
    if (found == subModels.end()) {
      return PARCHLET_NO;
    }
    const std::vector<AnnotationPoint>& list = found->second;
    const std::size_t room = points != nullptr ? std::min(capacity, list.size()) : 0;
    for (std::size_t index = 0; index < room; ++index) {
      const AnnotationPoint& point = list[index];
      points[index] = {point.x, point.y, point.xRatio, point.yRatio};
    }
    Write(count, list.size());
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkIsSubModelExist(const ParchletMark* mark, uint32_t subModel) {
  return OnMark(mark,
                [&](const Annotation& annotation) { return annotation.IsSubModelExist(subModel); });
}

int32_t ParchletMarkStartMoving(ParchletMark* mark, const ParchletPoint* point) {
  return WithPoint(mark, point, [](Annotation& annotation, const AnnotationPoint& start) {
    annotation.StartMoving(start);
  });
}

int32_t ParchletMarkMoving(ParchletMark* mark, const ParchletPoint* point) {
  return WithPoint(mark, point, [](Annotation& annotation, const AnnotationPoint& next) {
    annotation.Moving(next);
  });
}
