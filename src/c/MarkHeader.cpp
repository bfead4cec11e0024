#include <atomic>

#include "c/Call.h"

namespace {

template <class Value>
int32_t SetField(ParchletMark* mark, Value AnnotationHeader::*field, Value value) {
  return OnMark(mark, [&](Annotation& annotation) {
    annotation.*field = value;
    return PARCHLET_YES;
  });
}

template <class Value>
int32_t GetField(const ParchletMark* mark, Value AnnotationHeader::*field, Value* value) {
  return OnMark(mark, [&](const Annotation& annotation) {
    Write(value, annotation.*field);
    return PARCHLET_YES;
  });
}

}  // namespace

int32_t ParchletMarkSetAnnotationId(ParchletMark* mark, const char* annotationId) {
  return OnMark(mark, [&](Annotation& annotation) {
    annotation.SetAnnotationId(Text(annotationId));
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkGetAnnotationId(const ParchletMark* mark, ParchletTexts* annotationId) {
  return OnMark(mark,
                [&](const Annotation& annotation) {
                  Replace(annotationId, annotation.GetAnnotationId());
                  return PARCHLET_YES;
                },
                {annotationId});
}

int32_t ParchletMarkGetUser(const ParchletMark* mark, ParchletTexts* userId,
                            ParchletTexts* userSubId, ParchletTexts* nickname) {
  return OnMark(mark,
                [&](const Annotation& annotation) {
                  Replace(userId, annotation.userId);
                  Replace(userSubId, annotation.userSubId);
                  Replace(nickname, annotation.nickname);
                  return PARCHLET_YES;
                },
                {userId, userSubId, nickname});
}

int32_t ParchletMarkGetPen(const ParchletMark* mark, ParchletPen* pen) {
  return OnMark(mark, [&](const Annotation& annotation) {
    Write(pen, {annotation.pen.color, annotation.pen.width, annotation.pen.fill});
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkGetType(const ParchletMark* mark, int32_t* type, int32_t* subType) {
  return OnMark(mark, [&](const Annotation& annotation) {
    Write<int32_t>(type, annotation.type);
    Write<int32_t>(subType, annotation.subType);
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkGetPictureProperty(const ParchletMark* mark, ParchletTexts* pictureProperty) {
  return OnMark(mark,
                [&](const Annotation& annotation) {
                  Replace(pictureProperty, annotation.pictureProperty);
                  return PARCHLET_YES;
                },
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
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkGetHostData(const ParchletMark* mark, int32_t* data1, int32_t* data2,
                                int32_t* data3) {
  return OnMark(mark, [&](const Annotation& annotation) {
    Write(data1, annotation.hostData1);
    Write(data2, annotation.hostData2);
    Write(data3, annotation.hostData3);
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkSetTempStartTick(ParchletMark* mark, uint64_t tick) {
  return OnMark(mark, [&](Annotation& annotation) {
    // The refresh thread may read it.
    std::atomic_ref(annotation.tempStartTick).store(tick, std::memory_order_relaxed);
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkGetTempStartTick(const ParchletMark* mark, uint64_t* tick) {
  return GetField(mark, &AnnotationHeader::tempStartTick, tick);
}
