#include <parchlet/Annotation.h>

#include <atomic>
#include <utility>

#include "annotation/AnnotationState.h"

namespace {

// `erased` is written under the mark's lock, for the sake of copies, and read without it: asking is
// too frequent for a lock.
std::atomic_ref<std::int32_t> Shared(std::int32_t& field) {
  return std::atomic_ref<std::int32_t>(field);
}

}  // namespace

AnnotationHeader::AnnotationHeader() = default;
AnnotationHeader::AnnotationHeader(const AnnotationHeader& other) = default;
AnnotationHeader& AnnotationHeader::operator=(const AnnotationHeader& other) = default;
AnnotationHeader::~AnnotationHeader() = default;

Annotation::Annotation() : state(std::make_unique<State>(*this)) {}
Annotation::~Annotation() = default;

Annotation::Annotation(const Annotation& other) : Annotation() {
  state->CopyAnnotation(*other.state);
}

Annotation& Annotation::operator=(const Annotation& other) {
  if (this != &other) {
    state->CopyAnnotation(*other.state);
  }
  return *this;
}

struct Annotation::State::Snapshot {
  AnnotationHeader header;
  AnnotationPoint moveOrigin{};
  SubModels points;
  RECT frame{};
  std::shared_ptr<Gdiplus::Image> picture;
};

Annotation::State::Snapshot Annotation::State::TakeSnapshot() const {
  MutexLock lock(mutex);
  return {header, moveOrigin, points.Connected(), frame, picture};
}

// The snapshot keeps the two locks apart and, should memory run out, this mark as it was.
void Annotation::State::CopyAnnotation(const State& source) {
  Snapshot snapshot = source.TakeSnapshot();
  MutexLock lock(mutex);
  TakeOver(snapshot);
}

void Annotation::State::TakeOver(Snapshot& snapshot) {
  AnnotationHeader& from = snapshot.header;
  header.annotationId = std::move(from.annotationId);
  header.userId = std::move(from.userId);
  header.userSubId = std::move(from.userSubId);
  header.nickname = std::move(from.nickname);
  header.hostData1 = from.hostData1;
  header.hostData2 = from.hostData2;
  header.hostData3 = from.hostData3;
  header.subModelIndex = from.subModelIndex;
  header.order = from.order;
  Shared(header.erased).store(from.erased, std::memory_order_relaxed);
  header.tipVisible = from.tipVisible;
  header.type = from.type;
  header.subType = from.subType;
  header.pen = from.pen;
  moveOrigin = snapshot.moveOrigin;
  frame = snapshot.frame;
  picture.swap(snapshot.picture);
  points.SetAll(snapshot.points);
  PublishReach();
}

void Annotation::Init(AnnotationPen newPen, AnnotationType newType, AnnotationSubType newSubType,
                      const std::string& newUserId, const std::string& newUserSubId,
                      const std::string& newNickname) {
  MutexLock lock(state->mutex);
  pen = newPen;
  type = newType;
  subType = newSubType;
  userId = newUserId;
  userSubId = newUserSubId;
  nickname = newNickname;
  state->PublishReach();
}

void Annotation::SetAnnotationId(const std::string& newId) {
  MutexLock lock(state->mutex);
  annotationId = newId;
}

std::string Annotation::GetAnnotationId() const {
  MutexLock lock(state->mutex);
  return annotationId;
}

void Annotation::Erase(int value) {
  MutexLock lock(state->mutex);
  Shared(erased).store(value, std::memory_order_relaxed);
}

int Annotation::IsErased() const {
  return Shared(const_cast<std::int32_t&>(erased)).load(std::memory_order_relaxed);
}

void Annotation::Destroy() {
  MutexLock lock(state->mutex);
  state->picture.reset();
  SubModels none;
  state->points.SetAll(none);
  state->PublishReach();
}
