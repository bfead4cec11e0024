#include "annotation/AnnotationState.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "annotation/HitShapes.h"
#include "annotation/MarkLimits.h"

namespace {

// Cuts at the start of a character.
void CutName(std::string& name) {
  if (name.size() <= kMaxNicknameBytes) {
    return;
  }
  // A character has at most three bytes after its first; in broken text there is no better place.
  constexpr std::size_t kMostContinuationBytes = 3;
  const auto isContinuation = [&name](std::size_t at) {
    return (static_cast<unsigned char>(name[at]) & 0xC0) == 0x80;
  };
  std::size_t end = kMaxNicknameBytes;
  while (isContinuation(end) && end + kMostContinuationBytes > kMaxNicknameBytes) {
    --end;
  }
  name.erase(isContinuation(end) ? kMaxNicknameBytes : end);
}

}  // namespace

std::unique_ptr<Annotation> Annotation::State::FullCopy(const Annotation& source) {
  auto copy = std::make_unique<Annotation>(source);
  SubModels all;
  {
    const State& from = Of(source);
    MutexLock lock(from.mutex);
    all = from.points.All();
    copy->pictureProperty = source.pictureProperty;
  }
  copy->tempStartTick = Of(source).TempStartTick();
  State& to = Of(*copy);
  MutexLock lock(to.mutex);
  to.points.SetAll(all);
  return copy;
}

std::vector<AnnotationPoint> Annotation::State::FirstSubModel() const {
  MutexLock lock(mutex);
  const auto first = points.All().find(0);
  return first != points.All().end() ? first->second : std::vector<AnnotationPoint>();
}

void Annotation::State::MoveFirstSubModelTo(unsigned int subModel) {
  MutexLock lock(mutex);
  points.MoveFirstTo(subModel);
  PublishReach();
}

void Annotation::State::ReplaceSubModels(SubModels& fresh) {
  MutexLock lock(mutex);
  isDrawnHere = isDrawnHere && !fresh.contains(0);
  points.Merge(fresh);
  PublishReach();
}

void Annotation::State::LimitToBounds() {
  MutexLock lock(mutex);
  CutName(header.nickname);
  if (points.All().size() > kMaxSubModels || points.Count() > kMaxMarkPoints) {
    points.Limit(kMaxSubModels, kMaxMarkPoints);
    PublishReach();
  }
}

bool Annotation::State::LimitFragment(unsigned int subModel,
                                      std::vector<AnnotationPoint>& list) const {
  MutexLock lock(mutex);
  const SubModels& known = points.All();
  const auto sizeOf = [&known](unsigned int number) {
    const auto found = known.find(number);
    return found != known.end() ? found->second.size() : 0;
  };
  if (!known.contains(subModel) && known.size() >= kMaxSubModels) {
    return false;
  }
  std::size_t others = points.Count() - sizeOf(subModel);
  if (isDrawnHere && subModel != 0) {
    others -= sizeOf(0);
  }
  const std::size_t room = kMaxMarkPoints - std::min(others, kMaxMarkPoints);
  if (list.size() > room) {
    list.resize(room);
  }
  return true;
}

void Annotation::State::SetDrawnHere() {
  MutexLock lock(mutex);
  isDrawnHere = true;
}

void Annotation::State::ReportReach(ReachTable& table, std::size_t slot) {
  MutexLock lock(mutex);
  reachTable = &table;
  reachSlot = slot;
  published = {kNoBox, kNoBox};  // as the slot has it
  PublishReach();
}

std::size_t Annotation::State::ReachSlot() const {
  MutexLock lock(mutex);
  return reachSlot;
}

void Annotation::State::PublishReach() {
  if (reachTable == nullptr) {
    return;
  }
  // A stroke is hit half of the widest pen away from its centre line, give or take a rounding.
  constexpr LONG kHalfPen = kMaxPenWidth / 2 + 2;
  // The widened box must lie within the exact range too, or the margin would not know of it.
  constexpr LONG kFarthest = kFarthestExact - kHalfPen;
  ReachTable::Reach reach = {points.PixelBox(), frame};
  if (!IsEmptyBox(reach.hit)) {
    const bool isFar = Farthest(reach.hit) > kFarthest;
    reach.hit = Kind().isHitAnywhere || isFar ? kEverywhere : Widened(reach.hit, kHalfPen);
  }
  if (!IsSameBox(reach.hit, published.hit) || !IsSameBox(reach.frame, published.frame)) {
    published = reach;
    reachTable->Set(reachSlot, reach);
  }
}

bool Annotation::State::IsNamedIn(const std::map<std::string, Annotation*>& annotations) const {
  MutexLock lock(mutex);
  return annotations.contains(header.annotationId);
}

POINT Annotation::State::AnchorPixel() const {
  MutexLock lock(mutex);
  return points.PixelAt(0);
}

Annotation::State::TipSubject Annotation::State::GetTipSubject() const {
  MutexLock lock(mutex);
  TipSubject subject;
  if (!WantsTip()) {
    return subject;
  }
  subject.isWanted = true;
  subject.userId = header.userId;
  subject.nickname = header.nickname;
  const auto first = points.All().find(0);
  if (first != points.All().end() && !first->second.empty()) {
    subject.hasPoint = true;
    subject.firstPoint = first->second.front();
  }
  return subject;
}

void Annotation::State::SetTipVisible(int value) {
  MutexLock lock(mutex);
  header.tipVisible = value;
}

std::uint64_t Annotation::State::TempStartTick() const {
  return std::atomic_ref(header.tempStartTick).load(std::memory_order_relaxed);
}
