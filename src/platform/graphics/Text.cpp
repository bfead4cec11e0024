#include "platform/graphics/Text.h"

#include <cwchar>
#include <string_view>

#include "platform/graphics/Painter.h"
#include "platform/text/FontFamilies.h"
#include "platform/text/TextPainter.h"
#include "platform/text/Unicode.h"

namespace parchlet::graphics {

FontFamily::FontFamily(const wchar_t* name, const FontCollection* collection) {
  if (name == nullptr || collection != nullptr) {
    lastStatus = InvalidParameter;
    return;
  }
  installedName = FindFontFamily(EncodeUtf8(name)).value_or("");
  lastStatus = installedName.empty() ? FontFamilyNotFound : Ok;
}

Font::Font(const FontFamily* family, REAL emSize, INT style, Unit unit) {
  const bool isKnownStyle = style == FontStyleRegular || style == FontStyleBold;
  if (family == nullptr || !family->IsAvailable() || !(emSize > 0) || !isKnownStyle ||
      unit != UnitPixel) {
    lastStatus = InvalidParameter;
    return;
  }
  installedName = family->InstalledName();
  pixelSize = emSize;
  bold = style == FontStyleBold;
}

StringFormat::StringFormat(INT /*formatFlags*/, LANGID /*language*/) {}

Status StringFormat::SetAlignment(StringAlignment alignment) {
  return alignment == StringAlignmentNear ? Ok : InvalidParameter;
}

Status StringFormat::SetLineAlignment(StringAlignment alignment) {
  return alignment == StringAlignmentNear ? Ok : InvalidParameter;
}

Status Graphics::DrawString(const wchar_t* text, INT length, const Font* font, const RectF& area,
                            const StringFormat* format, const SolidBrush* brush) {
  const bool isPoint = area.Width == 0 && area.Height == 0;
  if (painter == nullptr || text == nullptr || length != -1 || font == nullptr ||
      !font->IsAvailable() || !isPoint || format == nullptr || brush == nullptr) {
    return Keep(InvalidParameter);
  }
  painter->DrawText({font->InstalledName(), font->IsBold(), font->PixelSize(), brush->Argb()}, text,
                    area.X, area.Y);
  return Ok;
}

}  // namespace parchlet::graphics
