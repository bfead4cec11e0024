#include <parchlet/Fragments.h>

#include <algorithm>
#include <utility>

namespace parchlet {

namespace {

using Points = std::vector<AnnotationPoint>;

Points AllPoints(const Annotation& mark) {
  Points all;
  for (const auto& [number, points] : mark.GetPoints()) {
    all.insert(all.end(), points.begin(), points.end());
  }
  return all;
}

std::unique_ptr<Annotation> MakeFragment(const AnnotationHeader& header, std::size_t index,
                                         Points points) {
  auto fragment = std::make_unique<Annotation>();
  static_cast<AnnotationHeader&>(*fragment) = header;
  fragment->subModelIndex = static_cast<std::int32_t>(index);
  fragment->InsertPoints(0, std::move(points));
  return fragment;
}

}  // namespace

std::vector<std::unique_ptr<Annotation>> SplitMark(const Annotation& mark, std::int32_t order) {
  const Annotation copy(mark);  // reads the header under the mark's lock
  AnnotationHeader header = copy;
  header.pictureProperty = mark.pictureProperty;
  header.order = order;
  const Points points = AllPoints(mark);
  std::vector<std::unique_ptr<Annotation>> fragments;
  std::size_t first = 0;
  do {
    const std::size_t last = std::min(points.size(), first + kFragmentPoints);
    fragments.push_back(MakeFragment(header, fragments.size(),
                                     Points(points.begin() + static_cast<std::ptrdiff_t>(first),
                                            points.begin() + static_cast<std::ptrdiff_t>(last))));
    first = last;
  } while (first < points.size());
  return fragments;
}

std::unique_ptr<Annotation> JoinFragments(
    const std::vector<std::unique_ptr<Annotation>>& fragments) {
  std::unique_ptr<Annotation> joined;
  for (const std::unique_ptr<Annotation>& fragment : fragments) {
    if (fragment == nullptr) {
      continue;
    }
    if (joined == nullptr) {
      joined = std::make_unique<Annotation>(*fragment);
      joined->pictureProperty = fragment->pictureProperty;
      joined->subModelIndex = 0;
      joined->ClearPoints();
    }
    const Annotation::SubModels points = fragment->GetPoints();
    const auto first = points.find(0);
    joined->InsertPoints(static_cast<unsigned int>(fragment->subModelIndex),
                         first != points.end() ? first->second : Points());
  }
  return joined;
}

}  // namespace parchlet
