#pragma once

#include <cstdint>
#include <string>

// How authors' names are shown beside fresh marks.
struct NicknameTipStyle {
  std::uint32_t textColor = 0xFF000000;  // ARGB
  std::uint32_t fontSize = 0;            // pixels; also the unit of the box's size
  std::wstring fontFamily;
  std::uint32_t boxColor = 0xFF000000;  // ARGB, behind the text
};
