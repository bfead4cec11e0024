#include <algorithm>

#include "annotation/PixelMath.h"
#include "page/AnnotationPage.h"

// A mark that a search may find, and its place in the paint order.
struct AnnotationPage::Candidate {
  PaintPlace place;
  Annotation* annotation;

  bool IsAbove(const Candidate& other) const {
    return place.entry->order != other.place.entry->order
               ? place.entry->order > other.place.entry->order
               : place.number > other.place.number;
  }
};

namespace {

bool PassesFilters(const PaintOrderEntry& entry, const std::string& userId,
                   const std::string& userSubId) {
  return userId.empty() ||
         (entry.userId == userId && (userSubId.empty() || entry.userSubId == userSubId));
}

// The slots of one search after the other, without an allocation each.
std::vector<std::size_t>& EmptySlots() {
  thread_local std::vector<std::size_t> slots;
  slots.clear();
  return slots;
}

}  // namespace

std::vector<AnnotationPage::Candidate> AnnotationPage::TopmostFirst(
    const std::vector<std::size_t>& slots, const std::string& userId,
    const std::string& userSubId) const {
  std::vector<Candidate> candidates;
  for (const std::size_t slot : slots) {
    const PaintPlace& place = paintPlaces[slot];
    if (place.entry == nullptr || !PassesFilters(*place.entry, userId, userSubId)) {
      continue;
    }
    Annotation* annotation = FindConfirmed(place.entry->userId, place.entry->annotationId);
    if (annotation != nullptr && annotation->IsErased() == 0) {
      candidates.push_back({place, annotation});
    }
  }
  std::sort(candidates.begin(), candidates.end(),
            [](const Candidate& a, const Candidate& b) { return a.IsAbove(b); });
  return candidates;
}

Annotation* AnnotationPage::FindAtPoint(const std::string& userId, const std::string& userSubId,
                                        const AnnotationPoint& point, bool useFrame) const {
  std::vector<std::size_t>& slots = EmptySlots();
  if (useFrame) {
    reachTable.FindFramed({point.x, point.y}, slots);
  } else {
    reachTable.FindTouched({point.x, point.y, point.x, point.y}, slots);
  }
  for (const Candidate& candidate : TopmostFirst(slots, userId, userSubId)) {
    if (candidate.annotation->FindAnnotation(point, useFrame) != 0) {
      return candidate.annotation;
    }
  }
  return nullptr;
}

std::vector<Annotation*> AnnotationPage::FindOnSegment(const std::string& userId,
                                                       const std::string& userSubId,
                                                       const AnnotationPoint& from,
                                                       const AnnotationPoint& to) const {
  std::vector<std::size_t>& slots = EmptySlots();
  reachTable.FindTouched(BoxOf({from.x, from.y}, {to.x, to.y}), slots);
  std::vector<Annotation*> found;
  for (const Candidate& candidate : TopmostFirst(slots, userId, userSubId)) {
    if (candidate.annotation->FindAnnotation(from, to) != 0) {
      found.push_back(candidate.annotation);
    }
  }
  return found;
}

Annotation* AnnotationPage::FindAnnotationAtPoint(const std::string& userId,
                                                  const std::string& userSubId,
                                                  const AnnotationPoint& point, bool useFrame) {
  MutexLock lock(mutex);
  return FindAtPoint(userId, userSubId, point, useFrame);
}

std::vector<Annotation*> AnnotationPage::FindAnnotationsOnSegment(const std::string& userId,
                                                                  const std::string& userSubId,
                                                                  const AnnotationPoint& from,
                                                                  const AnnotationPoint& to) {
  MutexLock lock(mutex);
  return FindOnSegment(userId, userSubId, from, to);
}

std::string AnnotationPage::EraseAnnotations(const std::string& userId,
                                             const std::string& userSubId, POINT point) {
  if (IsPointInPage(point) == 0) {
    return {};
  }
  MutexLock lock(mutex);
  selectedAnnotations.clear();
  const Annotation* hit = FindAtPoint(userId, userSubId, ToPagePoint(point), false);
  return hit != nullptr ? hit->GetAnnotationId() : std::string();
}

std::vector<std::string> AnnotationPage::EraseAnnotations(const std::string& userId,
                                                          const std::string& userSubId, POINT from,
                                                          POINT to) {
  if (IsPointInPage(from) == 0 && IsPointInPage(to) == 0) {
    return {};
  }
  MutexLock lock(mutex);
  selectedAnnotations.clear();
  std::vector<std::string> ids;
  for (const Annotation* hit :
       FindOnSegment(userId, userSubId, ToPagePoint(from), ToPagePoint(to))) {
    ids.push_back(hit->GetAnnotationId());
  }
  return ids;
}

int AnnotationPage::EraseAnnotation(const std::string& userId, const std::string& annotationId) {
  MutexLock lock(mutex);
  Annotation* annotation = FindConfirmed(userId, annotationId);
  if (annotation == nullptr || annotation->IsErased() != 0) {
    return 0;
  }
  annotation->Erase(1);
  return 1;
}

std::vector<std::string> AnnotationPage::EraseSelectedAnnotations() {
  MutexLock lock(mutex);
  std::vector<std::string> ids;
  ids.reserve(selectedAnnotations.size());
  for (const auto& [id, annotation] : selectedAnnotations) {
    ids.push_back(id);
  }
  selectedAnnotations.clear();
  return ids;
}
