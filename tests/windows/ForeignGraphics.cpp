// A host that draws a mark on an object of GDI+.
#include <parchlet/Annotation.h>

#include <gdiplus.h>

int DrawOn(Annotation& mark, Gdiplus::Graphics* graphics) {
#if defined(MARK_ALONE)
  return graphics != nullptr ? mark.IsErased() : 0;
#else
  return mark.Draw(graphics, {20, 10}, true);
#endif
}
