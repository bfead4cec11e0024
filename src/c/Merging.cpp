#include <algorithm>
#include <memory>

#include <parchlet/Fragments.h>

#include "annotation/AnnotationState.h"
#include "c/Call.h"

int32_t ParchletAddAnnotationFromRemote(ParchletEngine* engine, const char* docId,
                                        const char* pageId, const ParchletMark* mark) {
  if (mark == nullptr) {
    return PARCHLET_BAD_ARGUMENT;
  }
  return OnEngine(engine, [&](Parchlet& parchlet) {
    // A page knows its own marks by their address; any other is the host's to keep.
    auto* given = const_cast<Annotation*>(MarkOf(mark));
    return MarkState::Of(*given).IsOwned()
               ? parchlet.AddAnnotationFromRemote(Text(docId), Text(pageId), given)
               : parchlet.AddAnnotationFromRemote(Text(docId), Text(pageId),
                                                  MarkState::FullCopy(*given));
  });
}

int32_t ParchletCancelAnnotation(ParchletEngine* engine, const char* docId, const char* pageId,
                                 const char* annotationId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    parchlet.CancelAnnotation(Text(docId), Text(pageId), Text(annotationId));
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
  return FindMark(engine, [&](Parchlet& parchlet) {
    return parchlet.GetAnnotation(Text(docId), Text(pageId), Text(userId), Text(annotationId));
  });
}

ParchletMark* ParchletGetLocalAnnotation(ParchletEngine* engine, const char* docId,
                                         const char* pageId, const char* annotationId) {
  return FindMark(engine, [&](Parchlet& parchlet) {
    return parchlet.GetLocalAnnotation(Text(docId), Text(pageId), Text(annotationId));
  });
}

int32_t ParchletClearAnnotations(ParchletEngine* engine, const char* docId, const char* pageId,
                                 const char* userId, const char* userSubId) {
  return OnEngine(engine, [&](Parchlet& parchlet) {
    return parchlet.ClearAnnotations(Text(docId), Text(pageId), Text(userId), Text(userSubId));
  });
}

int32_t ParchletMarkCopyFragments(const ParchletMark* mark, int32_t order, ParchletMark** fragments,
                                  size_t capacity, size_t* count) {
  Write<std::size_t>(count, 0);
  return OnMark(mark, [&](const Annotation& annotation) {
    std::vector<std::unique_ptr<Annotation>> made = parchlet::SplitMark(annotation, order);
    Write(count, made.size());
    const std::size_t room = fragments != nullptr ? std::min(capacity, made.size()) : 0;
    for (std::size_t index = 0; index < room; ++index) {
      fragments[index] = HandleOf(made[index].release());
    }
  });
}

ParchletMark* ParchletMarkNewFromFragments(const ParchletMark* const* fragments, size_t count) {
  return HandleOf(OrNull([&] {
    std::vector<std::unique_ptr<Annotation>> copies;
    for (std::size_t index = 0; fragments != nullptr && index < count; ++index) {
      if (fragments[index] != nullptr) {
        copies.push_back(MarkState::FullCopy(*MarkOf(fragments[index])));
      }
    }
    return parchlet::JoinFragments(copies).release();
  }));
}
