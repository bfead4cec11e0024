#include "EnginePage.h"

#include <memory>
#include <string>

namespace {

std::unique_ptr<Annotation> MakeAnnotation(const Workload& workload, std::size_t index) {
  constexpr std::size_t kAuthors = 4;
  const BenchMark& mark = workload.marks[index];
  auto annotation = std::make_unique<Annotation>();
  annotation->Init({mark.color, mark.width, 0}, AnnotationTypeDrawing, mark.kind,
                   std::string("author-") + std::to_string(index % kAuthors), "", "");
  annotation->SetAnnotationId(std::string("mark-") + std::to_string(index));
  annotation->subModelIndex = 0;
  annotation->order = static_cast<std::int32_t>(index);
  for (const POINT& point : mark.points) {
    annotation->AddPoint({point.x, point.y, static_cast<double>(point.x) / workload.width,
                          static_cast<double>(point.y) / workload.height});
  }
  return annotation;
}

}  // namespace

EnginePage::EnginePage(const Workload& workload)
    : window(RECT{0, 0, workload.width, workload.height}) {
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

std::vector<std::uint32_t> EnginePage::CopyPixels() {
  page.UpdateLayeredContent();
  return window.CopyFrame().pixels;
}
