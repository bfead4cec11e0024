#include "c/Call.h"
#include "c/FullCopy.h"

std::unique_ptr<Annotation> FullCopy(const Annotation& source) {
  auto copy = std::make_unique<Annotation>(source);
  copy->pictureProperty = source.pictureProperty;
  copy->tempStartTick = source.tempStartTick;
  for (auto& [number, points] : source.GetPoints()) {
    if (copy->IsSubModelExist(number) == 0) {
      copy->InsertPoints(number, points);
    }
  }
  return copy;
}

ParchletMark* ParchletMarkNew(void) {
  Annotation* made = nullptr;
  Guarded([&] {
    made = new Annotation;
    return PARCHLET_YES;
  });
  return HandleOf(made);
}

ParchletMark* ParchletMarkCopy(const ParchletMark* mark) {
  Annotation* made = nullptr;
  OnMark(mark, [&](const Annotation& source) {
    made = FullCopy(source).release();
    return PARCHLET_YES;
  });
  return HandleOf(made);
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
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkErase(ParchletMark* mark, int32_t value) {
  return OnMark(mark, [&](Annotation& annotation) {
    annotation.Erase(value);
    return PARCHLET_YES;
  });
}

int32_t ParchletMarkIsErased(const ParchletMark* mark) {
  return OnMark(mark, [](const Annotation& annotation) {
    return annotation.IsErased() != 0 ? PARCHLET_YES : PARCHLET_NO;
  });
}

int32_t ParchletMarkDestroy(ParchletMark* mark) {
  return OnMark(mark, [](Annotation& annotation) {
    annotation.Destroy();
    return PARCHLET_YES;
  });
}
