#include "platform/window/Push.h"

#include <cstdint>

bool PushToWindow(HWND window, HDC surface) {
  RECT area{};
  if (GetWindowRect(window, &area) == 0) {
    return false;
  }
  POINT position = {area.left, area.top};
  SIZE size = {static_cast<LONG>(std::int64_t{area.right} - area.left),
               static_cast<LONG>(std::int64_t{area.bottom} - area.top)};
  POINT origin = {0, 0};
  BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  return UpdateLayeredWindow(window, nullptr, &position, &size, surface, &origin, 0, &blend,
                             ULW_ALPHA) != 0;
}
