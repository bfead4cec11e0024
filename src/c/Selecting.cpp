#include <map>

#include "c/Call.h"

int32_t ParchletStartSelecting(ParchletEngine* engine, const char* docId, const char* pageId,
                               const char* userId, const char* userSubId, int32_t x, int32_t y) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.StartSelecting(Text(docId), Text(pageId), Text(userId), Text(userSubId),
                                   {x, y});
  });
}

int32_t ParchletMoveSelecting(ParchletEngine* engine, int32_t x, int32_t y) {
  return OnEngine(engine, [&](Parchlet& parchlet) { return parchlet.MoveSelecting({x, y}); });
}

int32_t ParchletEndSelecting(ParchletEngine* engine) {
  return OnEngine(engine, [](Parchlet& parchlet) { return parchlet.EndSelecting(); });
}

int32_t ParchletGetSelectedAnnotations(ParchletEngine* engine, const char* docId,
                                       const char* pageId, ParchletMark** marks, size_t capacity) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    const std::map<std::string, Annotation*> selected =
        parchlet.GetSelectedAnnotations(Text(docId), Text(pageId));
    std::size_t written = 0;
    for (const auto& [id, mark] : selected) {
      if (marks == nullptr || written == capacity) {
        break;
      }
      marks[written++] = HandleOf(mark);
    }
    return Number(selected.size());
  });
}
