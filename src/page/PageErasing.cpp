#include <algorithm>

#include "annotation/PixelMath.h"
#include "page/AnnotationPage.h"

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

std::vector<const PaintOrderEntry*> AnnotationPage::TopmostFirst(
    const std::vector<std::size_t>& slots, const std::string& userId,
    const std::string& userSubId) const {
  std::vector<const PaintOrderEntry*> entries;
  for (const std::size_t slot : slots) {
    for (const auto* entry = latestEntries[slot]; entry != nullptr; entry = entry->earlier) {
      if (PassesFilters(*entry, userId, userSubId) && entry->annotation->IsErased() == 0) {
        entries.push_back(entry);
      }
    }
  }
  std::sort(entries.begin(), entries.end(),
            [](const PaintOrderEntry* a, const PaintOrderEntry* b) { return a->IsAbove(*b); });
  return entries;
}

Annotation* AnnotationPage::FindAtPoint(const std::string& userId, const std::string& userSubId,
                                        const AnnotationPoint& point, bool useFrame) const {
  std::vector<std::size_t>& slots = EmptySlots();
  if (useFrame) {
    reachTable.FindFramed({point.x, point.y}, slots);
  } else {
    reachTable.FindTouched({point.x, point.y, point.x, point.y}, slots);
  }
  for (const PaintOrderEntry* entry : TopmostFirst(slots, userId, userSubId)) {
    if (entry->annotation->FindAnnotation(point, useFrame) != 0) {
      return entry->annotation;
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
  for (const PaintOrderEntry* entry : TopmostFirst(slots, userId, userSubId)) {
    if (entry->annotation->FindAnnotation(from, to) != 0) {
      found.push_back(entry->annotation);
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
