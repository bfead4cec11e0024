#include "Layout.h"

#include <algorithm>
#include <cmath>

namespace whiteboard {

Layout MakeLayout(int width, int height, double aspect) {
  constexpr int kMargin = 18;
  Layout layout{};
  layout.toolbar = {0, 0, width, kToolbarHeight};
  layout.status = {0, std::max(height - kStatusHeight, kToolbarHeight), width,
                   std::max(height, kToolbarHeight + kStatusHeight)};
  layout.desk = {0, kToolbarHeight, width, layout.status.top};
  const int roomX = std::max(width - 2 * kMargin, 1);
  const int roomY = std::max(layout.desk.bottom - layout.desk.top - 2 * kMargin, 1);
  const int pageWidth = std::max(std::min(roomX, static_cast<int>(std::lround(roomY * aspect))), 1);
  const int pageHeight =
      std::max(std::min(roomY, static_cast<int>(std::lround(pageWidth / aspect))), 1);
  const int left = (width - pageWidth) / 2;
  const int top = kToolbarHeight + kMargin + (roomY - pageHeight) / 2;
  layout.page = {left, top, left + pageWidth, top + pageHeight};
  return layout;
}

}  // namespace whiteboard
