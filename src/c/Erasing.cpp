#include "c/Call.h"

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
                    // The answer to a single point that hits nothing is one empty id.
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

int32_t ParchletClearAnnotations(ParchletEngine* engine, const char* docId, const char* pageId,
                                 const char* userId, const char* userSubId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.ClearAnnotations(Text(docId), Text(pageId), Text(userId), Text(userSubId));
  });
}
