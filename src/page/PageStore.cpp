#include <parchlet/Utils.h>

#include <algorithm>
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
  currentAnnotation = annotation;
  selectedAnnotations.clear();
}

void AnnotationPage::AddRemote(Annotation* annotation) {
  const std::string key = annotation->annotationId;
  const auto subModel = static_cast<unsigned int>(annotation->subModelIndex);
  const bool isFirstFragment = subModel == 0;
  PaintOrderEntry entry = {annotation->order, annotation->userId, annotation->userSubId, key};
  AnnotationMap& authored = userAnnotations[annotation->userId];
  bool insert = false;

  const auto pending = localAnnotations.find(key);
  if (pending != localAnnotations.end()) {
    if (authored.emplace(key, pending->second).second) {
      insert = isFirstFragment;
    } else {
      // A drag that began here has come back: the copy that could undo it has served.
      delete pending->second;
    }
    localAnnotations.erase(pending);
  }

  Annotation*& stored = authored[key];
  if (stored == nullptr) {
    stored = annotation;
    insert = isFirstFragment;
  } else {
    insert = insert || (isFirstFragment && stored->IsSubModelExist(0) == 0);
    Annotation::SubModels received = annotation->GetPoints();
    stored->InsertPoints(subModel, std::move(received[0]));
  }
  if (insert) {
    InsertPaintEntry(std::move(entry));
  }
  stored->SetRectEx(GetSize());
}

void AnnotationPage::InsertPaintEntry(PaintOrderEntry entry) {
  auto position = paintOrder.end();
  while (position != paintOrder.begin() && std::prev(position)->order > entry.order) {
    --position;
  }
  paintOrder.insert(position, std::move(entry));
}

void AnnotationPage::DestroyAnnotations() {
  selectRect.Erase(1);
  selectedAnnotations.clear();
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
