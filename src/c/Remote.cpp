#include "c/Call.h"
#include "c/FullCopy.h"

namespace {

// Runs a search on the engine; gives what it finds, null without an engine or memory.
template <class Search>
ParchletMark* Find(ParchletEngine* engine, const Search& search) {
  Annotation* found = nullptr;
  OnEngine(engine, [&](Parchlet& parchlet) {
    found = search(parchlet);
    return PARCHLET_YES;
  });
  return HandleOf(found);
}

}  // namespace

int32_t ParchletAddAnnotationFromRemote(ParchletEngine* engine, const char* docId,
                                        const char* pageId, const ParchletMark* mark) {
  if (mark == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnEngine(engine, [&](Parchlet& parchlet) {
    const std::string doc = Text(docId);
    const std::string page = Text(pageId);
    std::unique_ptr<Annotation> copy = FullCopy(*MarkOf(mark));
    const std::string author = copy->userId;
    const std::string id = copy->GetAnnotationId();
    const int result = parchlet.AddAnnotationFromRemote(doc, page, copy.get());
    if (parchlet.GetAnnotation(doc, page, author, id) == copy.get()) {
      static_cast<void>(copy.release());  // new to the page, which owns it now
    }
    return result;
  });
}

int32_t ParchletCancelAnnotation(ParchletEngine* engine, const char* docId, const char* pageId,
                                 const char* annotationId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    parchlet.CancelAnnotation(Text(docId), Text(pageId), Text(annotationId));
    return PARCHLET_YES;
  });
}

int32_t ParchletFindAnnotation(ParchletEngine* engine, const char* docId, const char* pageId,
                               const char* userId, const char* annotationId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.FindAnnotation(Text(docId), Text(pageId), Text(userId), Text(annotationId));
  });
}

ParchletMark* ParchletGetAnnotation(ParchletEngine* engine, const char* docId, const char* pageId,
                                    const char* userId, const char* annotationId) {
  return Find(engine, [&](Parchlet& parchlet) {
    return parchlet.GetAnnotation(Text(docId), Text(pageId), Text(userId), Text(annotationId));
  });
}

ParchletMark* ParchletGetLocalAnnotation(ParchletEngine* engine, const char* docId,
                                         const char* pageId, const char* annotationId) {
  return Find(engine, [&](Parchlet& parchlet) {
    return parchlet.GetLocalAnnotation(Text(docId), Text(pageId), Text(annotationId));
  });
}
