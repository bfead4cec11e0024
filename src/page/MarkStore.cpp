#include "page/MarkStore.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <parchlet/Utils.h>

#include "annotation/PixelMath.h"

namespace {

void DeleteAll(MarkStore::Marks& marks) {
  for (const auto& [id, annotation] : marks) {
    delete annotation;
  }
  marks.clear();
}

Annotation* Find(const MarkStore::Marks& marks, const std::string& annotationId) {
  const auto found = marks.find(annotationId);
  return found != marks.end() ? found->second : nullptr;
}

}  // namespace

MarkStore::~MarkStore() {
  DestroyAnnotations();
}

void MarkStore::DestroyAnnotations() {
  entries.clear();
  reachTable.Clear();
  paintOrder.clear();
  DeleteAll(localAnnotations);
  for (auto& [userId, marks] : userAnnotations) {
    DeleteAll(marks);
  }
  userAnnotations.clear();
}

const MarkStore::Marks* MarkStore::FindAuthor(const std::string& userId) const {
  const auto author = userAnnotations.find(userId);
  return author != userAnnotations.end() ? &author->second : nullptr;
}

Annotation* MarkStore::FindConfirmed(const std::string& userId,
                                     const std::string& annotationId) const {
  const Marks* authored = FindAuthor(userId);
  return authored != nullptr ? Find(*authored, annotationId) : nullptr;
}

Annotation* MarkStore::FindPending(const std::string& annotationId) const {
  return Find(localAnnotations, annotationId);
}

void MarkStore::AddLocal(Annotation* annotation) {
  const std::string id = Utils::GenerateGuid();
  annotation->SetAnnotationId(id);
  Annotation*& entry = localAnnotations[id];
  delete entry;  // only where the system had no identifier to give, twice
  entry = annotation;
  MarkState::Of(*annotation).SetOwned();
  MarkState::Of(*annotation).SetDrawnHere();
}

// --- Merging ---

// All that a remote mark takes of memory is made by Prepare, so that Enter changes all or nothing.
struct MarkStore::Arrival {
  std::string key;
  std::int32_t index = 0;               // the fragment's number
  std::map<std::string, Marks> author;  // when it is new
  Marks* authored = nullptr;
  Marks entry;                       // when the mark is new among the author's
  std::unique_ptr<Annotation> copy;  // of what another page owns
  Annotation* confirmed = nullptr;   // what the store knows of the mark
  Annotation* pending = nullptr;
  Annotation* stored = nullptr;      // what it will know
  bool isPagesOwn = false;           // it is the very object that the store has
  Annotation::SubModels received;    // when the points go to a known mark
  std::list<PaintOrderEntry> place;  // when the fragment gives one
  std::size_t slot = 0;
};

MarkStore::Merged MarkStore::Merge(Annotation* annotation, CurrentAnnotPageSize size) {
  Arrival arrival;
  Prepare(arrival, annotation);
  Merged merged;
  merged.isKept = arrival.stored == annotation && !MarkState::Of(*annotation).IsOwned();
  merged.ended = arrival.confirmed != nullptr ? arrival.pending : nullptr;
  Enter(arrival, size);
  return merged;
}

void MarkStore::Prepare(Arrival& arrival, Annotation* annotation) {
  arrival.key = annotation->GetAnnotationId();
  arrival.index = annotation->subModelIndex;
  const auto known = userAnnotations.find(annotation->userId);
  arrival.authored = known != userAnnotations.end()
                         ? &known->second
                         : &arrival.author.try_emplace(annotation->userId).first->second;
  arrival.confirmed = Find(*arrival.authored, arrival.key);
  arrival.pending = FindPending(arrival.key);
  arrival.isPagesOwn = annotation == arrival.confirmed || annotation == arrival.pending;
  arrival.stored = arrival.confirmed != nullptr ? arrival.confirmed : arrival.pending;
  if (arrival.stored == nullptr) {
    // A mark has one owner for life, so what a page owns already is not shared with it.
    if (MarkState::Of(*annotation).IsOwned()) {
      arrival.copy = MarkState::FullCopy(*annotation);
    }
    arrival.stored = arrival.copy != nullptr ? arrival.copy.get() : annotation;
  } else if (!arrival.isPagesOwn) {
    const auto number = static_cast<unsigned int>(arrival.index);
    std::vector<AnnotationPoint> points = MarkState::Of(*annotation).FirstSubModel();
    if (MarkState::Of(*arrival.stored).LimitFragment(number, points)) {
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

void MarkStore::Enter(Arrival& arrival, CurrentAnnotPageSize size) {
  Annotation* stored = arrival.stored;
  MarkState& state = MarkState::Of(*stored);
  const bool isAdopted = arrival.confirmed == nullptr && arrival.pending == nullptr;
  // What a page owns already has its points under their own numbers, whatever its index says.
  const bool isFragment = isAdopted && arrival.copy == nullptr && arrival.index >= 1;
  userAnnotations.merge(arrival.author);
  arrival.authored->merge(arrival.entry);
  static_cast<void>(arrival.copy.release());
  state.SetOwned();
  if (arrival.confirmed == nullptr) {
    state.ReportReach(reachTable, arrival.slot);
  }
  EndPending(arrival);
  if (isAdopted) {
    state.LimitToBounds();
  }
  if (isFragment) {
    state.MoveFirstSubModelTo(static_cast<unsigned int>(arrival.index));
  } else if (!arrival.received.empty()) {
    state.ReplaceSubModels(arrival.received);
  }
  if (!arrival.place.empty()) {
    InsertPaintEntry(arrival.place);
  }
  stored->SetRectEx(size);
}

// A drawing that is confirmed is in the author's map now. A move that began here has come back, and
// the copy that could undo it has served: the object that arrived may be that very copy.
void MarkStore::EndPending(const Arrival& arrival) {
  if (arrival.pending == nullptr) {
    return;
  }
  localAnnotations.erase(arrival.key);
  if (arrival.confirmed != nullptr) {
    delete arrival.pending;
  }
}

std::size_t MarkStore::AddSlot() {
  entries.push_back(nullptr);
  try {
    return reachTable.Add();
  } catch (...) {
    entries.pop_back();
    throw;
  }
}

// Fragment 0 gives a mark its place, once and for good. A drawing that comes back as the object
// that it is has all its points, whatever its index says.
bool MarkStore::GetsPlace(const Arrival& arrival) const {
  if (arrival.confirmed == nullptr) {
    return arrival.index == 0 || arrival.isPagesOwn;
  }
  return arrival.index == 0 && entries[MarkState::Of(*arrival.confirmed).ReachSlot()] == nullptr;
}

void MarkStore::InsertPaintEntry(std::list<PaintOrderEntry>& entry) {
  PaintOrderEntry& made = entry.front();
  auto position = paintOrder.end();
  while (position != paintOrder.begin() && std::prev(position)->order > made.order) {
    --position;
  }
  made.number = paintOrder.size();
  entries[MarkState::Of(*made.annotation).ReachSlot()] = &made;
  paintOrder.splice(position, entry);
}

// --- Reverting ---

void MarkStore::AddBackups(const Marks& moved) {
  std::map<std::string, std::unique_ptr<Annotation>> made;
  Marks backups;
  for (const auto& [id, annotation] : moved) {
    if (!localAnnotations.contains(id)) {
      const auto backup = made.emplace(id, std::make_unique<Annotation>(*annotation)).first;
      backup->second->Erase(1);
      MarkState::Of(*backup->second).SetOwned();
      backups.emplace(id, backup->second.get());
    }
  }
  for (auto& [id, backup] : made) {
    static_cast<void>(backup.release());
  }
  localAnnotations.merge(backups);
}

void MarkStore::Cancel(const std::string& annotationId) {
  const auto found = localAnnotations.find(annotationId);
  if (found == localAnnotations.end()) {
    return;
  }
  const Annotation* pending = found->second;
  for (const auto& [author, authored] : userAnnotations) {
    if (Annotation* confirmed = Find(authored, annotationId)) {
      *confirmed = *pending;
      confirmed->Erase(0);
      break;
    }
  }
  localAnnotations.erase(found);
  delete pending;
}

// --- Searching ---

std::vector<const PaintOrderEntry*> MarkStore::TopmostFirst(const AuthorFilter& filter) const {
  std::vector<const PaintOrderEntry*> found;
  for (const std::size_t slot : nearSlots) {
    const PaintOrderEntry* entry = entries[slot];
    if (entry != nullptr && filter.Passes(*entry) && entry->annotation->IsErased() == 0) {
      found.push_back(entry);
    }
  }
  std::sort(found.begin(), found.end(),
            [](const PaintOrderEntry* a, const PaintOrderEntry* b) { return a->IsAbove(*b); });
  return found;
}

Annotation* MarkStore::FindAtPoint(const AuthorFilter& filter, const AnnotationPoint& point,
                                   bool useFrame) const {
  const POINT pixel = StoredPixel(point);
  nearSlots.clear();
  if (useFrame) {
    reachTable.FindFramed(pixel, nearSlots);
  } else {
    reachTable.FindTouched(BoxOf(pixel, pixel), nearSlots);
  }
  for (const PaintOrderEntry* entry : TopmostFirst(filter)) {
    if (entry->annotation->FindAnnotation(point, useFrame) != 0) {
      return entry->annotation;
    }
  }
  return nullptr;
}

std::vector<Annotation*> MarkStore::FindOnSegment(const AuthorFilter& filter,
                                                  const AnnotationPoint& from,
                                                  const AnnotationPoint& to) const {
  nearSlots.clear();
  reachTable.FindTouched(BoxOf(StoredPixel(from), StoredPixel(to)), nearSlots);
  std::vector<Annotation*> found;
  for (const PaintOrderEntry* entry : TopmostFirst(filter)) {
    if (entry->annotation->FindAnnotation(from, to) != 0) {
      found.push_back(entry->annotation);
    }
  }
  return found;
}

void MarkStore::AddWithin(const std::string& userId, const RECT& rect, Marks& found) const {
  const auto addFrom = [&](const Marks& authored) {
    for (const auto& [id, annotation] : authored) {
      // A host may erase with any value, while IsInSelectRect knows 1 alone.
      if (annotation->IsErased() == 0 && annotation->IsInSelectRect(rect) != 0) {
        found[id] = annotation;
      }
    }
  };
  if (!userId.empty()) {
    if (const Marks* authored = FindAuthor(userId)) {
      addFrom(*authored);
    }
    return;
  }
  for (const auto& [author, authored] : userAnnotations) {
    addFrom(authored);
  }
}
