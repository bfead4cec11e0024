#include <parchlet/Utils.h>

#include <iterator>
#include <utility>

#include "page/AnnotationPage.h"

namespace {

template <class Map>
void DeleteAll(Map& annotations) {
  for (const auto& [id, annotation] : annotations) {
    delete annotation;
  }
  annotations.clear();
}

}  // namespace

void AnnotationPage::AddAnnotation(Annotation* annotation, bool fromRemote) {
  if (annotation == nullptr) {
    return;
  }
  MutexLock lock(mutex);
  if (fromRemote) {
    AddRemote(annotation);
  } else {
    AddLocal(annotation);
  }
}

void AnnotationPage::AddLocal(Annotation* annotation) {
  const std::string id = Utils::GenerateGuid();
  annotation->SetAnnotationId(id);
  localAnnotations[id] = annotation;
  annotation->isOwned = true;
  currentAnnotation = annotation;
  selectedAnnotations.clear();
}

void AnnotationPage::AddRemote(Annotation* annotation) {
  const std::string key = annotation->GetAnnotationId();
  const std::int32_t index = annotation->subModelIndex;
  PaintOrderEntry entry = {annotation->order, annotation->userId, annotation->userSubId, key};
  AnnotationMap& authored = userAnnotations[annotation->userId];
  const auto isIn = [&](const AnnotationMap& annotations) {
    const auto found = annotations.find(key);
    return found != annotations.end() && found->second == annotation;
  };
  const bool isOwn = isIn(authored) || isIn(localAnnotations);
  std::vector<AnnotationPoint> received;
  if (!isOwn && (authored.contains(key) || localAnnotations.contains(key))) {
    received = annotation->FirstSubModel();
  }

  // From here on `annotation` may be gone: it may be the very copy that its echo makes needless.
  Annotation* stored = ConfirmPending(key, authored);
  if (stored == nullptr) {
    stored = Adopt(annotation, authored);
    if (index >= 1) {
      stored->MoveFirstSubModelTo(static_cast<unsigned int>(index));
    }
  } else if (!isOwn) {
    stored->InsertPoints(static_cast<unsigned int>(index), std::move(received));
  }
  if (index == 0) {
    InsertPaintEntry(stored, std::move(entry));
  }
  stored->SetRectEx(GetSize());
}

// Ends the pending change of that id, if there is one; gives the confirmed mark, or null.
Annotation* AnnotationPage::ConfirmPending(const std::string& id, AnnotationMap& authored) {
  const auto confirmed = authored.find(id);
  Annotation* stored = confirmed != authored.end() ? confirmed->second : nullptr;
  const auto pending = localAnnotations.find(id);
  if (pending == localAnnotations.end()) {
    return stored;
  }
  Annotation* local = pending->second;
  if (stored == nullptr) {
    authored.emplace(id, local);
    localAnnotations.erase(pending);
    AddToReachTable(local);
    return local;
  }
  // A move that began here has come back: the copy that could undo it has served.
  localAnnotations.erase(pending);
  if (currentAnnotation == local) {
    currentAnnotation = nullptr;
  }
  delete local;
  return stored;
}

Annotation* AnnotationPage::Adopt(Annotation* annotation, AnnotationMap& authored) {
  // A mark has one owner for life, so another page's object is not shared with it.
  std::unique_ptr<Annotation> copy;
  if (annotation->isOwned) {
    copy = std::make_unique<Annotation>(*annotation);
    annotation = copy.get();
  }
  authored.emplace(annotation->GetAnnotationId(), annotation);
  static_cast<void>(copy.release());
  annotation->isOwned = true;
  AddToReachTable(annotation);
  return annotation;
}

void AnnotationPage::AddToReachTable(Annotation* annotation) {
  paintPlaces.push_back({annotation, nullptr, 0});
  annotation->ReportReach(reachTable, reachTable.Add());
}

void AnnotationPage::InsertPaintEntry(const Annotation* annotation, PaintOrderEntry entry) {
  PaintPlace& place = paintPlaces[annotation->ReachSlot()];
  if (place.entry != nullptr) {
    return;
  }
  auto position = paintOrder.end();
  while (position != paintOrder.begin() && std::prev(position)->order > entry.order) {
    --position;
  }
  place.number = paintOrder.size();
  place.entry = &*paintOrder.insert(position, std::move(entry));
}

Annotation* AnnotationPage::FindConfirmed(const std::string& userId,
                                          const std::string& annotationId) const {
  const auto author = userAnnotations.find(userId);
  if (author == userAnnotations.end()) {
    return nullptr;
  }
  const auto found = author->second.find(annotationId);
  return found != author->second.end() ? found->second : nullptr;
}

void AnnotationPage::DestroyAnnotations() {
  selectRect.Erase(1);
  selectedAnnotations.clear();
  paintPlaces.clear();
  reachTable.Clear();
  paintOrder.clear();
  DeleteAll(localAnnotations);
  currentAnnotation = nullptr;
  for (auto& [userId, annotations] : userAnnotations) {
    DeleteAll(annotations);
  }
  userAnnotations.clear();
  delete backgroundPicture;
  backgroundPicture = nullptr;
}
