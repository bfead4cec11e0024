#include "Fragments.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace replay {

namespace {

std::vector<AnnotationPoint> AllPoints(const Annotation& mark) {
  std::vector<AnnotationPoint> all;
  for (const auto& [number, points] : mark.GetPoints()) {
    all.insert(all.end(), points.begin(), points.end());
  }
  return all;
}

Fragment MakeFragment(const Annotation& mark, int order, std::size_t index,
                      std::vector<AnnotationPoint> points) {
  auto fragment = std::make_shared<Annotation>();
  fragment->Init(mark.pen, mark.type, mark.subType, mark.userId, mark.userSubId, mark.nickname);
  fragment->SetAnnotationId(mark.GetAnnotationId());
  fragment->order = order;
  fragment->subModelIndex = static_cast<std::int32_t>(index);
  fragment->InsertPoints(0, std::move(points));
  return fragment;
}

}  // namespace

std::vector<Fragment> Split(const Annotation& mark, int order) {
  const std::vector<AnnotationPoint> points = AllPoints(mark);
  std::vector<Fragment> fragments;
  for (std::size_t first = 0; first < points.size(); first += kMaxFragmentPoints) {
    const std::size_t last = std::min(points.size(), first + kMaxFragmentPoints);
    fragments.push_back(MakeFragment(mark, order, fragments.size(),
                                     {points.begin() + static_cast<std::ptrdiff_t>(first),
                                      points.begin() + static_cast<std::ptrdiff_t>(last)}));
  }
  return fragments;
}

bool IsKnown(Parchlet& engine, const std::string& docId, const std::string& pageId,
             const Annotation& mark) {
  return engine.GetLocalAnnotation(docId, pageId, mark.annotationId) != nullptr ||
         engine.GetAnnotation(docId, pageId, mark.userId, mark.annotationId) != nullptr;
}

bool HandOver(Parchlet& engine, const std::string& docId, const std::string& pageId,
              std::unique_ptr<Annotation> mark) {
  const bool isNew = !IsKnown(engine, docId, pageId, *mark);
  const bool isTaken = engine.AddAnnotationFromRemote(docId, pageId, mark.get()) == 1;
  if (isTaken && isNew) {
    static_cast<void>(mark.release());  // the page's from now on
  }
  return isTaken;
}

}  // namespace replay
