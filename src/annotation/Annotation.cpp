#include <parchlet/Annotation.h>

#include <atomic>
#include <new>
#include <utility>

#include "platform/Platform.h"

namespace {

constexpr std::size_t kLatest = 1;

// Both Erase and IsErased may meet the refresh thread, for which a lock would be too much.
std::atomic_ref<std::int32_t> Shared(std::int32_t& field) {
  return std::atomic_ref<std::int32_t>(field);
}

constexpr GUID PictureFormatId(std::uint32_t first) {
  return {first, 0x0728, 0x11d3, {0x9d, 0x7b, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
}

AnnotationSubType SubTypeOf(Gdiplus::Image& image) {
  GUID format{};
  if (image.GetRawFormat(&format) != Gdiplus::Ok) {
    return AnnotationSubTypeUnknown;
  }
  if (format == PictureFormatId(0xb96b3cab)) {
    return AnnotationSubTypeBmp;
  }
  if (format == PictureFormatId(0xb96b3caf)) {
    return AnnotationSubTypePng;
  }
  if (format == PictureFormatId(0xb96b3cae)) {
    return AnnotationSubTypeJpeg;
  }
  return AnnotationSubTypeUnknown;
}

// Null when there is no memory for it: the mark is then left without a picture.
template <class Source>
std::shared_ptr<Gdiplus::Image> LoadImage(Source source) {
  try {
    return std::make_shared<Gdiplus::Image>(source);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
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
  Snapshot snapshot{*this, moveOrigin, ConnectedSubModels(points), frame, picture};
  snapshot.header.erased = IsErased();
  return snapshot;
}

// The snapshot keeps the two locks apart and, should memory run out, this mark as it was.
void Annotation::CopyAnnotation(const Annotation& source) {
  Snapshot snapshot = source.TakeSnapshot();
  AnnotationHeader& header = snapshot.header;
  MutexLock lock(mutex);
  annotationId = std::move(header.annotationId);
  userId = std::move(header.userId);
  userSubId = std::move(header.userSubId);
  nickname = std::move(header.nickname);
  hostData1 = header.hostData1;
  hostData2 = header.hostData2;
  hostData3 = header.hostData3;
  subModelIndex = header.subModelIndex;
  order = header.order;
  Erase(header.erased);
  tipVisible = header.tipVisible;
  type = header.type;
  subType = header.subType;
  pen = header.pen;
  moveOrigin = snapshot.moveOrigin;
  frame = snapshot.frame;
  picture.swap(snapshot.picture);
  points.swap(snapshot.points);
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
}

bool Annotation::IsTwoPointKind() const {
  if (type == AnnotationTypePicture) {
    return true;
  }
  switch (subType) {
    case AnnotationSubTypeLine:
    case AnnotationSubTypeEllipse:
    case AnnotationSubTypeRectangle:
    case AnnotationSubTypeTriangle:
    case AnnotationSubTypeRightTriangle:
      return true;
    default:
      return false;
  }
}

void Annotation::AddPoint(AnnotationPoint point) {
  MutexLock lock(mutex);
  std::vector<AnnotationPoint>& list = points[0];
  if (IsTwoPointKind() && list.size() > kLatest) {
    list[kLatest] = point;
  } else {
    list.push_back(point);
  }
}

void Annotation::InsertPoints(unsigned int subModel, std::vector<AnnotationPoint> newPoints) {
  MutexLock lock(mutex);
  points[subModel] = std::move(newPoints);
}

void Annotation::ClearPoints() {
  MutexLock lock(mutex);
  points.clear();
}

Annotation::SubModels Annotation::GetPoints() const {
  MutexLock lock(mutex);
  return points;
}

int Annotation::IsSubModelExist(unsigned int subModel) const {
  MutexLock lock(mutex);
  return points.contains(subModel) ? 1 : 0;
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
  Shared(erased).store(value, std::memory_order_relaxed);
}

int Annotation::IsErased() const {
  return Shared(const_cast<std::int32_t&>(erased)).load(std::memory_order_relaxed);
}

void Annotation::StartMoving(AnnotationPoint point) {
  MutexLock lock(mutex);
  moveOrigin = point;
}

void Annotation::Moving(AnnotationPoint point) {
  MutexLock lock(mutex);
  const double dx = point.xRatio - moveOrigin.xRatio;
  const double dy = point.yRatio - moveOrigin.yRatio;
  moveOrigin = point;
  unsigned int next = 0;
  for (auto& [number, list] : points) {
    if (number != next) {
      break;
    }
    ++next;
    for (AnnotationPoint& moved : list) {
      moved.xRatio += dx;
      moved.yRatio += dy;
    }
  }
}

void Annotation::SetPicture(const std::wstring& path, const std::string& property) {
  if (path.empty()) {
    return;
  }
  std::shared_ptr<Gdiplus::Image> loaded = LoadImage(path.c_str());
  MutexLock lock(mutex);
  picture = std::move(loaded);
  SetPictureProperty(property);
}

void Annotation::SetPicture(IStream* stream, const std::string& property) {
  if (stream == nullptr) {
    return;
  }
  std::shared_ptr<Gdiplus::Image> loaded = LoadImage(stream);
  stream->Release();
  MutexLock lock(mutex);
  picture = std::move(loaded);
  SetPictureProperty(property);
}

void Annotation::SetPictureProperty(const std::string& property) {
  if (picture == nullptr) {
    return;
  }
  subType = SubTypeOf(*picture);
  pictureProperty = property;
}

void Annotation::Destroy() {
  MutexLock lock(mutex);
  picture.reset();
  points.clear();
}
