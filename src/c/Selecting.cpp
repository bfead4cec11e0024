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

int32_t ParchletEraseAnnotations(ParchletEngine* engine, const char* docId, const char* pageId,
                                 const char* userId, const char* userSubId,
                                 const ParchletPixel* path, size_t count, ParchletTexts* ids) {
  if (path == nullptr && count > 0) {
    return BadArgument({ids});
  }
  return OnEngine(engine,
                  [&](Parchlet& parchlet) {
                    std::vector<POINT> points;
                    points.reserve(count);
                    for (std::size_t index = 0; index < count; ++index) {
                      points.push_back({path[index].x, path[index].y});
                    }
                    std::vector<std::string> found = parchlet.EraseAnnotations(
                        Text(docId), Text(pageId), Text(userId), Text(userSubId), points);
                    // For a single point that hits nothing, the engine returns one empty id.
                    std::erase(found, std::string());
                    const std::int32_t result = Number(found.size());
                    Replace(ids, std::move(found));
                    return result;
                  },
                  {ids});
}

int32_t ParchletEraseAnnotation(ParchletEngine* engine, const char* docId, const char* pageId,
                                const char* userId, const char* annotationId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.EraseAnnotation(Text(docId), Text(pageId), Text(userId), Text(annotationId));
  });
}

int32_t ParchletEraseAnnotationFromRemote(ParchletEngine* engine, const char* docId,
                                          const char* pageId, const char* userId,
                                          const char* annotationId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.EraseAnnotationFromRemote(Text(docId), Text(pageId), Text(userId),
                                              Text(annotationId));
  });
}

int32_t ParchletEraseSelectedAnnotations(ParchletEngine* engine, const char* docId,
                                         const char* pageId, ParchletTexts* ids) {
  return OnEngine(engine,
                  [&](Parchlet& parchlet) {
                    std::vector<std::string> dropped =
                        parchlet.EraseSelectedAnnotations(Text(docId), Text(pageId));
                    const std::int32_t result = Number(dropped.size());
                    Replace(ids, std::move(dropped));
                    return result;
                  },
                  {ids});
}
