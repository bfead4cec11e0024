#include <cmath>
#include <memory>

#include <parchlet/Utils.h>

#include "annotation/PixelMath.h"
#include "page/AnnotationPage.h"
#include "platform/PictureFiles.h"

namespace {

struct ReleaseStream {
  void operator()(IStream* stream) const { stream->Release(); }
};
using StreamPointer = std::unique_ptr<IStream, ReleaseStream>;

void Rewind(IStream& stream) {
  const LARGE_INTEGER start{};
  stream.Seek(start, STREAM_SEEK_SET, nullptr);
}

// A picture keeps each extent that fits the page, and gets half the page's otherwise.
int FitExtent(UINT picture, int page) {
  return picture < static_cast<UINT>(page) ? static_cast<int>(picture) : page / 2;
}

}  // namespace

bool AnnotationPage::FitPicture(unsigned int imageWidth, unsigned int imageHeight,
                                PictureBox* box) const {
  const int width = currentInfo.width;
  const int height = currentInfo.height;
  if (imageWidth == 0 || imageHeight == 0 || width == 0 || height == 0) {
    return false;
  }
  constexpr double kSameAspect = 0.001;
  const double pageAspect = static_cast<double>(width) / height;
  const double imageAspect = static_cast<double>(imageWidth) / imageHeight;
  *box = {0, 0, width, height};
  if (std::abs(pageAspect - imageAspect) < kSameAspect) {
    return true;
  }
  if (pageAspect > imageAspect) {
    box->width = SaturatingPixel(height * imageAspect);
    box->x = (width - box->width) / 2;
  } else {
    box->height = SaturatingPixel(width / imageAspect);
    box->y = (height - box->height) / 2;
  }
  return true;
}

// Gives the annotation the corners of its box; false when a background picture has no size.
bool AnnotationPage::PlacePicture(Gdiplus::Image& probe, Annotation& annotation,
                                  bool isBackground) const {
  PictureBox box = {0, 0, FitExtent(probe.GetWidth(), currentInfo.width),
                    FitExtent(probe.GetHeight(), currentInfo.height)};
  if (isBackground && !FitPicture(probe.GetWidth(), probe.GetHeight(), &box)) {
    return false;
  }
  annotation.AddPoint(ToPagePoint({box.x, box.y}));
  annotation.AddPoint(ToPagePoint({box.x + box.width, box.y + box.height}));
  return true;
}

void AnnotationPage::ReplaceBackgroundPicture(Annotation* annotation) {
  MutexLock lock(mutex);
  backgroundPicture.reset(annotation);
  MarkState::Of(*annotation).SetOwned();
}

// `load` gives the annotation its image. A failure, memory that runs out included, leaves it as it
// came: without points and without a picture.
template <class Load>
bool AnnotationPage::GivePicture(Gdiplus::Image& probe, Annotation& annotation, bool isBackground,
                                 const Load& load) {
  try {
    if (!PlacePicture(probe, annotation, isBackground)) {
      return false;
    }
    load();
  } catch (...) {
    annotation.Destroy();
    throw;
  }
  if (isBackground) {
    ReplaceBackgroundPicture(&annotation);
  }
  return true;
}

bool AnnotationPage::AddPictureFromFile(const std::wstring& filePath,
                                        const std::string& pictureProperty, Annotation* annotation,
                                        bool isBackground) {
  if (!surfaceReady || filePath.empty() || annotation == nullptr) {
    return false;
  }
  const std::unique_ptr<Gdiplus::Image> probe = LoadPictureFile(filePath);
  if (probe->GetWidth() == 0 || probe->GetHeight() == 0) {
    return false;
  }
  return GivePicture(*probe, *annotation, isBackground,
                     [&] { annotation->SetPicture(filePath, pictureProperty); });
}

bool AnnotationPage::AddPictureFromStream(const std::string& pictureData,
                                          const std::string& pictureProperty,
                                          Annotation* annotation, bool isBackground) {
  if (!surfaceReady || pictureData.empty() || annotation == nullptr) {
    return false;
  }
  StreamPointer stream(Utils::MakePictureStream(pictureData));
  if (stream == nullptr) {
    return false;
  }
  Rewind(*stream);
  Gdiplus::Image probe(stream.get());
  return GivePicture(probe, *annotation, isBackground, [&] {
    // The probe left the stream at its end.
    Rewind(*stream);
    annotation->SetPicture(stream.release(), pictureProperty);
  });
}
