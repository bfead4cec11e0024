#include <parchlet/Annotation.h>

#include <atomic>
#include <utility>

#include "annotation/ReachTable.h"

#include "platform/Platform.h"

namespace {

// `erased` is written under the mark's lock, for the sake of copies, and read without it: asking is
// too frequent for a lock.
std::atomic_ref<std::int32_t> Shared(std::int32_t& field) {
  return std::atomic_ref<std::int32_t>(field);
}

// The sub-models that count as one mark: the unbroken run from 0, without the empty ones.
Annotation::SubModels ConnectedSubModels(const Annotation::SubModels& all) {
  Annotation::SubModels connected;
  unsigned int next = 0;
  for (const auto& [number, list] : all) {
    if (number != next) {
      break;
    }
    ++next;
    if (!list.empty()) {
      connected.emplace_hint(connected.end(), number, list);
    }
  }
  return connected;
}

}  // namespace

struct Annotation::Snapshot {
  AnnotationHeader header;
  AnnotationPoint moveOrigin{};
  SubModels points;
  RECT frame{};
  std::shared_ptr<Gdiplus::Image> picture;
};

Annotation::Annotation() = default;
Annotation::~Annotation() = default;

Annotation::Annotation(const Annotation& other) : Annotation() {
  CopyAnnotation(other);
}

Annotation& Annotation::operator=(const Annotation& other) {
  if (this != &other) {
    CopyAnnotation(other);
  }
  return *this;
}

Annotation::Snapshot Annotation::TakeSnapshot() const {
  MutexLock lock(mutex);
  return {*this, moveOrigin, ConnectedSubModels(points), frame, picture};
}

// The snapshot keeps the two locks apart and, should memory run out, this mark as it was.
void Annotation::CopyAnnotation(const Annotation& source) {
  Snapshot snapshot = source.TakeSnapshot();
  MutexLock lock(mutex);
  TakeOver(snapshot);
}

void Annotation::TakeOver(Snapshot& snapshot) {
  AnnotationHeader& header = snapshot.header;
  annotationId = std::move(header.annotationId);
  userId = std::move(header.userId);
  userSubId = std::move(header.userSubId);
  nickname = std::move(header.nickname);
  hostData1 = header.hostData1;
  hostData2 = header.hostData2;
  hostData3 = header.hostData3;
  subModelIndex = header.subModelIndex;
  order = header.order;
  Shared(erased).store(header.erased, std::memory_order_relaxed);
  tipVisible = header.tipVisible;
  type = header.type;
  subType = header.subType;
  pen = header.pen;
  moveOrigin = snapshot.moveOrigin;
  frame = snapshot.frame;
  picture.swap(snapshot.picture);
  points.swap(snapshot.points);
  PointsReplaced();
  PublishReach();
}

void Annotation::Init(AnnotationPen newPen, AnnotationType newType, AnnotationSubType newSubType,
                      const std::string& newUserId, const std::string& newUserSubId,
                      const std::string& newNickname) {
  MutexLock lock(mutex);
  pen = newPen;
  type = newType;
  subType = newSubType;
  userId = newUserId;
  userSubId = newUserSubId;
  nickname = newNickname;
  PublishReach();
}

void Annotation::SetAnnotationId(const std::string& newId) {
  MutexLock lock(mutex);
  annotationId = newId;
}

std::string Annotation::GetAnnotationId() const {
  MutexLock lock(mutex);
  return annotationId;
}

bool Annotation::IsNamedIn(const std::map<std::string, Annotation*>& annotations) const {
  MutexLock lock(mutex);
  return annotations.contains(annotationId);
}

void Annotation::Erase(int value) {
  MutexLock lock(mutex);
  Shared(erased).store(value, std::memory_order_relaxed);
}

int Annotation::IsErased() const {
  return Shared(const_cast<std::int32_t&>(erased)).load(std::memory_order_relaxed);
}

Annotation::TipSubject Annotation::GetTipSubject() const {
  MutexLock lock(mutex);
  TipSubject subject;
  if (nickname.empty() || tipVisible == 0) {
    return subject;
  }
  subject.isWanted = true;
  subject.userId = userId;
  subject.nickname = nickname;
  const auto first = points.find(0);
  if (first != points.end() && !first->second.empty()) {
    subject.hasPoint = true;
    subject.firstPoint = first->second.front();
  }
  return subject;
}

void Annotation::SetTipVisible(int value) {
  MutexLock lock(mutex);
  tipVisible = value;
}

void Annotation::Destroy() {
  MutexLock lock(mutex);
  picture.reset();
  points.clear();
  PointsReplaced();
}
