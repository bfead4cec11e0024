// The painter's classes for text. Each keeps the status of its last failed call.
#pragma once

#include <string>

#include "platform/graphics/Graphics.h"

using LANGID = WORD;

inline constexpr LANGID LANG_NEUTRAL = 0;

namespace Gdiplus {

enum FontStyle { FontStyleRegular = 0, FontStyleBold = 1 };
enum StringAlignment { StringAlignmentNear = 0 };

class FontCollection;

// A family of installed fonts, found by its name when it is made. A name that no installed family
// answers to gives FontFamilyNotFound.
class FontFamily {
 public:
  // `collection` is null: the installed fonts.
  explicit FontFamily(const wchar_t* name, const FontCollection* collection = nullptr);

  bool IsAvailable() const { return !installedName.empty(); }
  Status GetLastStatus() const { return lastStatus; }

  // The family that answers, UTF-8; empty when there is none.
  const std::string& InstalledName() const { return installedName; }

 private:
  std::string installedName;
  Status lastStatus = Ok;
};

// A family at a size and in a style. It needs the family only while it is made.
class Font {
 public:
  // `style` is a FontStyle and `unit` UnitPixel. InvalidParameter for any other, for a size that is
  // not above 0 and for a family that is not available.
  Font(const FontFamily* family, REAL emSize, INT style = FontStyleRegular, Unit unit = UnitPixel);

  bool IsAvailable() const { return !installedName.empty(); }
  Status GetLastStatus() const { return lastStatus; }

  const std::string& InstalledName() const { return installedName; }
  REAL PixelSize() const { return pixelSize; }
  bool IsBold() const { return bold; }

 private:
  std::string installedName;  // empty when the font cannot be drawn with
  REAL pixelSize = 0;
  bool bold = false;
  Status lastStatus = Ok;
};

// How text is laid out: from its origin to the right and downwards, in lines that end at line ends
// alone. There is no other way yet, so it holds nothing.
class StringFormat {
 public:
  // No flags, the neutral language.
  explicit StringFormat(INT formatFlags = 0, LANGID language = LANG_NEUTRAL);

  Status SetAlignment(StringAlignment alignment);
  Status SetLineAlignment(StringAlignment alignment);
};

}  // namespace Gdiplus
