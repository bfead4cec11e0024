#include "workload/EnginePage.h"

#include <filesystem>
#include <random>
#include <string>

namespace {

// Pictures reach an annotation as files do.
void GivePicture(const Picture& picture, Annotation& annotation) {
  const std::filesystem::path file = std::filesystem::temp_directory_path() /
                                     ("parchlet-bench-" + std::to_string(std::random_device()()));
  const std::ptrdiff_t stride = std::ptrdiff_t{picture.width} * 4;
  if (SavePicture({picture.pixels.data(), picture.width, picture.height, stride},
                  PictureEncoder::kPng, file.string())) {
    annotation.SetPicture(file.wstring(), "");
    std::filesystem::remove(file);
  }
}

}  // namespace

std::unique_ptr<Annotation> MakeAnnotation(const Workload& workload, std::size_t index) {
  constexpr std::size_t kAuthors = 4;
  const BenchMark& mark = workload.marks[index];
  auto annotation = std::make_unique<Annotation>();
  const bool isPicture = mark.picture != nullptr;
  annotation->Init({mark.color, mark.width, 0},
                   isPicture ? AnnotationTypePicture : AnnotationTypeDrawing, mark.kind,
                   std::string("author-") + std::to_string(index % kAuthors), "", "");
  if (isPicture) {
    GivePicture(*mark.picture, *annotation);
  }
  annotation->SetAnnotationId(std::string("mark-") + std::to_string(index));
  annotation->subModelIndex = 0;
  annotation->order = static_cast<std::int32_t>(index);
  for (const POINT& point : mark.points) {
    annotation->AddPoint({point.x, point.y, static_cast<double>(point.x) / workload.width,
                          static_cast<double>(point.y) / workload.height});
  }
  return annotation;
}

EnginePage::EnginePage(const Workload& workload)
    : window(RECT{0, 0, workload.width, workload.height}),
      width(workload.width),
      height(workload.height) {
  AnnotationPageInfo info = {};
  info.width = workload.width;
  info.height = workload.height;
  info.viewRect = {0, 0, workload.width, workload.height};
  info.backgroundColor = 0xFFFFFFFF;
  page.InitPage(window.Handle(), info, nullptr);
  for (std::size_t i = 0; i < workload.marks.size(); ++i) {
    // Every id is new, so the page adopts every mark.
    page.AddAnnotation(MakeAnnotation(workload, i).release(), true);
  }
}

// Another background is another page, pixel by pixel, and the same work.
bool EnginePage::ShowAnew() {
  page.SetPageBackgroundColor(++frames % 2 == 0 ? 0xFFFFFFFF : 0xFFFEFEFE);
  return page.UpdateLayeredContent() != 0;
}

bool EnginePage::ShowLive() {
  if (live == nullptr || livePoints == kLivePoints) {
    auto path = std::make_unique<Annotation>();
    path->Init({0xFF205080, 6, 0}, AnnotationTypeDrawing, AnnotationSubTypePath, "author-0", "",
               "");
    if (live != nullptr) {
      live->Erase(1);
    }
    live = path.release();
    livePoints = 0;
    page.AddAnnotation(live, false);
  }
  const auto step = static_cast<int>(livePoints++);
  const int x = width / 4 + 3 * step;
  const int y = height / 2 + (step % 40 < 20 ? step % 20 : 20 - step % 20);
  live->AddPoint({x, y, static_cast<double>(x) / width, static_cast<double>(y) / height});
  return page.UpdateLayeredContent() != 0;
}

std::vector<std::uint32_t> EnginePage::CopyPixels() {
  page.UpdateLayeredContent();
  return window.CopyFrame().pixels;
}
