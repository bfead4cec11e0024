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
  Annotation*& entry = localAnnotations[id];
  delete entry;  // only where the system had no identifier to give, twice
  entry = annotation;
  annotation->isOwned = true;
  currentAnnotation = annotation;
  selectedAnnotations.clear();
}

// All that a remote mark takes of memory is made by Prepare, so that Enter changes all or nothing.
struct AnnotationPage::Arrival {
  std::string key;
  std::int32_t index = 0;                       // the fragment's number
  std::map<std::string, AnnotationMap> author;  // when it is new
  AnnotationMap* authored = nullptr;
  AnnotationMap entry;               // when the mark is new among the author's
  std::unique_ptr<Annotation> copy;  // of what another page owns
  Annotation* confirmed = nullptr;   // what the store knows of the mark
  Annotation* pending = nullptr;
  Annotation* stored = nullptr;      // what it will know
  Annotation::SubModels received;    // when the points go to a known mark
  std::list<PaintOrderEntry> place;  // when the fragment gives one
  std::size_t slot = 0;
};

void AnnotationPage::AddRemote(Annotation* annotation) {
  Arrival arrival;
  Prepare(arrival, annotation);
  Enter(arrival);
}

void AnnotationPage::Prepare(Arrival& arrival, Annotation* annotation) {
  const auto find = [&](const AnnotationMap& annotations) -> Annotation* {
    const auto found = annotations.find(arrival.key);
    return found != annotations.end() ? found->second : nullptr;
  };
  arrival.key = annotation->GetAnnotationId();
  arrival.index = annotation->subModelIndex;
  const auto known = userAnnotations.find(annotation->userId);
  arrival.authored = known != userAnnotations.end()
                         ? &known->second
                         : &arrival.author.try_emplace(annotation->userId).first->second;
  arrival.confirmed = find(*arrival.authored);
  arrival.pending = find(localAnnotations);
  arrival.stored = arrival.confirmed != nullptr ? arrival.confirmed : arrival.pending;
  if (arrival.stored == nullptr) {
    // A mark has one owner for life, so what a page owns already is not shared with it.
    if (annotation->isOwned) {
      arrival.copy = std::make_unique<Annotation>(*annotation);
    }
    arrival.stored = arrival.copy != nullptr ? arrival.copy.get() : annotation;
  } else {
    const auto number = static_cast<unsigned int>(arrival.index);
    std::vector<AnnotationPoint> points = annotation->FirstSubModel();
    if (arrival.stored->LimitFragment(number, points)) {
      arrival.received.emplace(number, std::move(points));
    }
  }
  if (GetsPlace(arrival)) {
    arrival.place.push_back({annotation->order, annotation->userId, annotation->userSubId,
                             arrival.key, arrival.stored});
  }
  if (arrival.confirmed == nullptr) {
    arrival.entry.emplace(arrival.key, arrival.stored);
    arrival.slot = AddSlot();
  }
}

// The object that was handed over may be gone in the midst of it: it may be the very copy that its
// echo makes needless.
void AnnotationPage::Enter(Arrival& arrival) {
  Annotation* stored = arrival.stored;
  const bool isAdopted = arrival.confirmed == nullptr && arrival.pending == nullptr;
  userAnnotations.merge(arrival.author);
  arrival.authored->merge(arrival.entry);
  static_cast<void>(arrival.copy.release());
  stored->isOwned = true;
  if (arrival.confirmed == nullptr) {
    stored->ReportReach(reachTable, arrival.slot);
  }
  EndPending(arrival);
  if (isAdopted) {
    stored->LimitToBounds();
  }
  if (isAdopted && arrival.index >= 1) {
    stored->MoveFirstSubModelTo(static_cast<unsigned int>(arrival.index));
  } else if (!arrival.received.empty()) {
    stored->ReplaceSubModels(arrival.received);
  }
  if (!arrival.place.empty()) {
    InsertPaintEntry(arrival.place);
  }
  stored->SetRectEx(GetSize());
}

// A drawing that is confirmed is another map's now; a move that began here has come back, and the
// copy that could undo it has served.
void AnnotationPage::EndPending(const Arrival& arrival) {
  if (arrival.pending == nullptr) {
    return;
  }
  localAnnotations.erase(arrival.key);
  if (arrival.confirmed == nullptr) {
    return;
  }
  if (currentAnnotation == arrival.pending) {
    currentAnnotation = nullptr;
  }
  delete arrival.pending;
}

std::size_t AnnotationPage::AddSlot() {
  latestEntries.push_back(nullptr);
  try {
    return reachTable.Add();
  } catch (...) {
    latestEntries.pop_back();
    throw;
  }
}

// A mark that came without its first fragment has a place to get, whatever its sub-model 0 is by
// then: the frame makes an empty one, and a drawing that another fragment confirmed has its own.
bool AnnotationPage::GetsPlace(const Arrival& arrival) const {
  return arrival.index == 0 &&
         (arrival.confirmed == nullptr || arrival.confirmed->IsSubModelExist(0) == 0 ||
          latestEntries[arrival.confirmed->ReachSlot()] == nullptr);
}

void AnnotationPage::InsertPaintEntry(std::list<PaintOrderEntry>& entry) {
  PaintOrderEntry& made = entry.front();
  auto position = paintOrder.end();
  while (position != paintOrder.begin() && std::prev(position)->order > made.order) {
    --position;
  }
  const PaintOrderEntry*& latest = latestEntries[made.annotation->ReachSlot()];
  made.number = paintOrder.size();
  made.earlier = latest;
  latest = &made;
  paintOrder.splice(position, entry);
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
  latestEntries.clear();
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
