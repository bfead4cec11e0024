#include "annotation/PixelMath.h"
#include "page/AnnotationPage.h"

int AnnotationPage::IsPointInPage(POINT point) const {
  return point.x >= 0 && point.x <= currentInfo.width && point.y >= 0 &&
                 point.y <= currentInfo.height
             ? 1
             : 0;
}

AnnotationPoint AnnotationPage::ToPagePoint(POINT pixel) const {
  return PagePoint(pixel, GetSize());
}
