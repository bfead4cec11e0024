// Builds annotations as a host rebuilds a participant's mark from a message.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <parchlet/Annotation.h>

#include "annotation/PixelMath.h"

// A bitmap file of 2 x 1 black pixels.
inline const std::string kBitmapFile =
    std::string("BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x02\0\0\0\x01\0\0\0\x01\0\x18\0", 30) +
    std::string(32, '\0');

// Points of a page of `size` pixels.
inline std::vector<AnnotationPoint> PointsOn(CurrentAnnotPageSize size,
                                             const std::vector<POINT>& pixels) {
  std::vector<AnnotationPoint> points;
  points.reserve(pixels.size());
  for (const POINT& pixel : pixels) {
    points.push_back(PagePoint(pixel, size));
  }
  return points;
}

// Mark("id").By("ada").Order(3).Points(size, {{10, 10}, {40, 25}}).Make(): a black path of width 6
// and sub-model 0 unless said otherwise.
class Mark {
 public:
  explicit Mark(const std::string& id) : made(std::make_unique<Annotation>()) {
    made->annotationId = id;
    made->subModelIndex = 0;
  }

  Mark& By(const std::string& userId) {
    made->userId = userId;
    return *this;
  }
  Mark& Order(int order) {
    made->order = order;
    return *this;
  }
  // The number that the page stores the points under.
  Mark& Fragment(int subModel) {
    made->subModelIndex = subModel;
    return *this;
  }
  Mark& Shape(AnnotationSubType subType) {
    made->subType = subType;
    return *this;
  }
  Mark& Pen(std::uint32_t color, int width, int fill = 0) {
    made->pen = {color, width, fill};
    return *this;
  }
  Mark& Points(CurrentAnnotPageSize size, const std::vector<POINT>& pixels, unsigned subModel = 0) {
    made->InsertPoints(subModel, PointsOn(size, pixels));
    return *this;
  }
  // A filled box over the pixels x .. x+side-1, y .. y+side-1.
  Mark& Box(CurrentAnnotPageSize size, int x, int y, int side, std::uint32_t color) {
    return Shape(AnnotationSubTypeRectangle)
        .Pen(color, 1, 1)
        .Points(size, {{x, y}, {x + side, y + side}});
  }

  std::unique_ptr<Annotation> Make() { return std::move(made); }
  // For a call that adopts the object.
  Annotation* Release() { return made.release(); }

 private:
  std::unique_ptr<Annotation> made;
};
