#include "c/Call.h"

ParchletEngine* ParchletEngineNew(void) {
  ParchletEngine* made = nullptr;
  Guarded([&] {
    made = new ParchletEngine;
    return PARCHLET_YES;
  });
  return made;
}

void ParchletEngineFree(ParchletEngine* engine) {
  delete engine;
}

int32_t ParchletInit(ParchletEngine* engine) {
  return OnEngine(engine, [](Parchlet& parchlet) { return parchlet.Init(); });
}

int32_t ParchletDestroy(ParchletEngine* engine) {
  return OnEngine(engine, [](Parchlet& parchlet) {
    parchlet.Destroy();
    return PARCHLET_YES;
  });
}

int32_t ParchletSetPen(ParchletEngine* engine, uint32_t color, uint32_t width) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    parchlet.SetPen(color, width);
    return PARCHLET_YES;
  });
}

int32_t ParchletSetAnnotationType(ParchletEngine* engine, int32_t type, int32_t subType) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    parchlet.SetAnnotationType(static_cast<AnnotationType>(type),
                               static_cast<AnnotationSubType>(subType));
    return PARCHLET_YES;
  });
}

int32_t ParchletSetUserInfo(ParchletEngine* engine, const char* userId, const char* userSubId,
                            const char* nickname) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    parchlet.SetUserInfo(Text(userId), Text(userSubId), Text(nickname));
    return PARCHLET_YES;
  });
}

int32_t ParchletSetPageBackgroundColor(ParchletEngine* engine, uint32_t color) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) { return parchlet.SetPageBackgroundColor(color); });
}

int32_t ParchletSetZoom(ParchletEngine* engine, const char* docId, float zoom, int32_t x,
                        int32_t y) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) { return parchlet.SetZoom(Text(docId), zoom, x, y); });
}

int32_t ParchletSetPageSize(ParchletEngine* engine, const char* docId, const char* pageId,
                            int32_t width, int32_t height) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.SetPageSize(Text(docId), Text(pageId), width, height);
  });
}

int32_t ParchletSetNicknameTip(ParchletEngine* engine, uint32_t textColor, uint32_t fontSize,
                               const char* fontName, uint32_t boxColor) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.SetNicknameTip(textColor, fontSize, Text(fontName), boxColor);
  });
}
