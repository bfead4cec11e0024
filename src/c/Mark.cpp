#include <algorithm>
#include <atomic>

#include <parchlet/Utils.h>

#include "annotation/AnnotationState.h"
#include "c/Call.h"

namespace {

template <class Value>
int32_t SetField(ParchletMark* mark, Value AnnotationHeader::*field, Value value) {
  return OnMark(mark, [&](Annotation& annotation) { annotation.*field = value; });
}

template <class Value>
int32_t GetField(const ParchletMark* mark, Value AnnotationHeader::*field, Value* value) {
  return OnMark(mark, [&](const Annotation& annotation) { Write(value, annotation.*field); });
}

AnnotationPoint PointOf(const ParchletPoint& point) {
  return {point.x, point.y, point.xRatio, point.yRatio};
}

// Runs an operation that takes a point of the host's.
template <class Operation>
int32_t WithPoint(ParchletMark* mark, const ParchletPoint* point, const Operation& operation) {
  if (point == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnMark(mark, [&](Annotation& annotation) { operation(annotation, PointOf(*point)); });
}

}  // namespace

ParchletMark* ParchletMarkNew(void) {
  return HandleOf(OrNull([] { return new Annotation; }));
}

ParchletMark* ParchletMarkCopy(const ParchletMark* mark) {
  if (mark == nullptr) {
    return nullptr;
  }
  return HandleOf(OrNull([&] { return MarkState::FullCopy(*MarkOf(mark)).release(); }));
}

void ParchletMarkFree(ParchletMark* mark) {
  delete MarkOf(mark);
}

int32_t ParchletMarkInit(ParchletMark* mark, const ParchletPen* pen, int32_t type, int32_t subType,
                         const char* userId, const char* userSubId, const char* nickname) {
  if (pen == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnMark(mark, [&](Annotation& annotation) {
    annotation.Init({pen->color, pen->width, pen->fill}, static_cast<AnnotationType>(type),
                    static_cast<AnnotationSubType>(subType), Text(userId), Text(userSubId),
                    Text(nickname));
  });
}

int32_t ParchletMarkSetAnnotationId(ParchletMark* mark, const char* annotationId) {
  return OnMark(mark,
                [&](Annotation& annotation) { annotation.SetAnnotationId(Text(annotationId)); });
}

int32_t ParchletMarkGetAnnotationId(const ParchletMark* mark, ParchletTexts* annotationId) {
  return OnMark(
      mark,
      [&](const Annotation& annotation) { Replace(annotationId, annotation.GetAnnotationId()); },
      {annotationId});
}

int32_t ParchletMarkGetUser(const ParchletMark* mark, ParchletTexts* userId,
                            ParchletTexts* userSubId, ParchletTexts* nickname) {
  return OnMark(mark,
                [&](const Annotation& annotation) {
                  Replace(userId, annotation.userId);
                  Replace(userSubId, annotation.userSubId);
                  Replace(nickname, annotation.nickname);
                },
                {userId, userSubId, nickname});
}

int32_t ParchletMarkGetPen(const ParchletMark* mark, ParchletPen* pen) {
  return OnMark(mark, [&](const Annotation& annotation) {
    Write(pen, {annotation.pen.color, annotation.pen.width, annotation.pen.fill});
  });
}

int32_t ParchletMarkGetType(const ParchletMark* mark, int32_t* type, int32_t* subType) {
  return OnMark(mark, [&](const Annotation& annotation) {
    Write<int32_t>(type, annotation.type);
    Write<int32_t>(subType, annotation.subType);
  });
}

int32_t ParchletMarkGetPictureProperty(const ParchletMark* mark, ParchletTexts* pictureProperty) {
  return OnMark(
      mark,
      [&](const Annotation& annotation) { Replace(pictureProperty, annotation.pictureProperty); },
      {pictureProperty});
}

int32_t ParchletMarkSetOrder(ParchletMark* mark, int32_t order) {
  return SetField(mark, &AnnotationHeader::order, order);
}

int32_t ParchletMarkGetOrder(const ParchletMark* mark, int32_t* order) {
  return GetField(mark, &AnnotationHeader::order, order);
}

int32_t ParchletMarkSetSubModelIndex(ParchletMark* mark, int32_t index) {
  return SetField(mark, &AnnotationHeader::subModelIndex, index);
}

int32_t ParchletMarkGetSubModelIndex(const ParchletMark* mark, int32_t* index) {
  return GetField(mark, &AnnotationHeader::subModelIndex, index);
}

int32_t ParchletMarkSetHostData(ParchletMark* mark, int32_t data1, int32_t data2, int32_t data3) {
  return OnMark(mark, [&](Annotation& annotation) {
    annotation.hostData1 = data1;
    annotation.hostData2 = data2;
    annotation.hostData3 = data3;
  });
}

int32_t ParchletMarkGetHostData(const ParchletMark* mark, int32_t* data1, int32_t* data2,
                                int32_t* data3) {
  return OnMark(mark, [&](const Annotation& annotation) {
    Write(data1, annotation.hostData1);
    Write(data2, annotation.hostData2);
    Write(data3, annotation.hostData3);
  });
}

int32_t ParchletMarkSetTempStartTick(ParchletMark* mark, uint64_t tick) {
  return OnMark(mark, [&](Annotation& annotation) {
    // The refresh thread may read it.
    std::atomic_ref(annotation.tempStartTick).store(tick, std::memory_order_relaxed);
  });
}

int32_t ParchletMarkGetTempStartTick(const ParchletMark* mark, uint64_t* tick) {
  return GetField(mark, &AnnotationHeader::tempStartTick, tick);
}

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
  });
}

int32_t ParchletMarkClearPoints(ParchletMark* mark) {
  return OnMark(mark, [](Annotation& annotation) { annotation.ClearPoints(); });
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

int32_t ParchletMarkErase(ParchletMark* mark, int32_t value) {
  return OnMark(mark, [&](Annotation& annotation) { annotation.Erase(value); });
}

int32_t ParchletMarkIsErased(const ParchletMark* mark) {
  return OnMark(mark, [](const Annotation& annotation) {
    return annotation.IsErased() != 0 ? PARCHLET_YES : PARCHLET_NO;
  });
}

int32_t ParchletMarkSetPictureFromFile(ParchletMark* mark, const char* filePath,
                                       const char* pictureProperty) {
  return OnMark(mark, [&](Annotation& annotation) {
    const std::wstring path = Utils::Utf8ToUnicode(Text(filePath));
    annotation.SetPicture(path, Text(pictureProperty));
    return path.empty() ? PARCHLET_NO : PARCHLET_YES;
  });
}

int32_t ParchletMarkSetPictureFromStream(ParchletMark* mark, const void* data, size_t size,
                                         const char* pictureProperty) {
  if (data == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnMark(mark, [&](Annotation& annotation) {
    if (size == 0) {
      return PARCHLET_NO;
    }
    const std::string property = Text(pictureProperty);
    IStream* stream = Utils::MakePictureStream(std::string(static_cast<const char*>(data), size));
    annotation.SetPicture(stream, property);
    return stream != nullptr ? PARCHLET_YES : PARCHLET_NO_MEMORY;
  });
}

int32_t ParchletMarkDestroy(ParchletMark* mark) {
  return OnMark(mark, [](Annotation& annotation) { annotation.Destroy(); });
}
