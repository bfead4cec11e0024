#include <memory>
#include <new>
#include <utility>

#include <parchlet/Annotation.h>

#include "annotation/AnnotationState.h"
#include "platform/PictureFiles.h"

namespace {

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
template <class Load>
std::shared_ptr<Gdiplus::Image> LoadImage(const Load& load) {
  try {
    return load();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

void Annotation::SetPicture(const std::wstring& path, const std::string& property) {
  if (path.empty()) {
    return;
  }
  state->SetLoadedPicture(LoadImage([&] { return LoadPictureFile(path); }), property);
}

void Annotation::SetPicture(IStream* stream, const std::string& property) {
  if (stream == nullptr) {
    return;
  }
  std::shared_ptr<Gdiplus::Image> loaded =
      LoadImage([=] { return std::make_unique<Gdiplus::Image>(stream); });
  stream->Release();
  state->SetLoadedPicture(std::move(loaded), property);
}

// Takes the property by value, so that a mark changes whole or not at all.
void Annotation::State::SetLoadedPicture(std::shared_ptr<Gdiplus::Image> loaded,
                                         std::string property) {
  MutexLock lock(mutex);
  picture.swap(loaded);
  SetPictureProperty(std::move(property));
  PublishReach();
}

void Annotation::State::SetPictureProperty(std::string property) {
  if (picture == nullptr) {
    return;
  }
  header.subType = SubTypeOf(*picture);
  header.pictureProperty.swap(property);
}
