#include "c/Call.h"

int32_t ParchletStartDrawing(ParchletEngine* engine, const char* docId, const char* pageId,
                             int32_t x, int32_t y) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.StartDrawing(Text(docId), Text(pageId), {x, y});
  });
}

int32_t ParchletMoveDrawing(ParchletEngine* engine, int32_t x, int32_t y) {
  return OnEngine(engine, [&](Parchlet& parchlet) { return parchlet.MoveDrawing({x, y}); });
}

int32_t ParchletEndDrawing(ParchletEngine* engine) {
  return OnEngine(engine, [](Parchlet& parchlet) { return parchlet.EndDrawing(); });
}

int32_t ParchletGetCurrentAnnotationInfo(ParchletEngine* engine, ParchletTexts* annotationId,
                                         ParchletTexts* docId, ParchletTexts* pageId) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) {
                    std::string doc;
                    std::string page;
                    std::string id = parchlet.GetCurrentAnnotationInfo(doc, page);
                    Replace(docId, std::move(doc));
                    Replace(pageId, std::move(page));
                    return ReplaceIfAny(annotationId, std::move(id));
                  },
                  {annotationId, docId, pageId});
}

int32_t ParchletIsPointAnnotation(ParchletEngine* engine, const ParchletMark* mark) {
  if (mark == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.IsPointAnnotation(const_cast<Annotation*>(MarkOf(mark)));
  });
}
