// The painter's classes for text. Each keeps the status of its last failed call.
#pragma once

#include <string>

#include "platform/graphics/Graphics.h"

namespace parchlet::graphics {

enum FontStyle { FontStyleRegular = 0, FontStyleBold = 1 };
enum StringAlignment { StringAlignmentNear = 0 };

class FontCollection;

// A family of installed fonts, looked up by its name on construction. The status is
// FontFamilyNotFound if no installed family has that name or stands in for it.
class FontFamily {
 public:
  // `collection` is null: the installed fonts.
  explicit FontFamily(const wchar_t* name, const FontCollection* collection = nullptr);

  bool IsAvailable() const { return !installedName.empty(); }
  Status GetLastStatus() const { return lastStatus; }

  // The installed family that was found, UTF-8; empty if there is none.
  const std::string& InstalledName() const { return installedName; }

 private:
  std::string installedName;
  Status lastStatus = Ok;
};

// A family at a size and in a style. The family may be destroyed after construction.
class Font {
 public:
  // The status is InvalidParameter unless `style` is a FontStyle, `unit` is UnitPixel, the size is
  // above 0 and the family is available.
  Font(const FontFamily* family, REAL emSize, INT style = FontStyleRegular, Unit unit = UnitPixel);

  bool IsAvailable() const { return !installedName.empty(); }
  Status GetLastStatus() const { return lastStatus; }

  const std::string& InstalledName() const { return installedName; }
  REAL PixelSize() const { return pixelSize; }
  bool IsBold() const { return bold; }

 private:
  std::string installedName;  // empty if the font cannot be used
  REAL pixelSize = 0;
  bool bold = false;
  Status lastStatus = Ok;
};

// How text is laid out: from its origin to the right and downwards; lines end only at line breaks.
// There is no other layout yet, so it holds nothing.
class StringFormat {
 public:
  // No flags, the neutral language.
  explicit StringFormat(INT formatFlags = 0, LANGID language = LANG_NEUTRAL);

  Status SetAlignment(StringAlignment alignment);
  Status SetLineAlignment(StringAlignment alignment);
};

}  // namespace parchlet::graphics
