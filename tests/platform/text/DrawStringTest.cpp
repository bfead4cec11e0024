#include <gtest/gtest.h>

#include "Canvas.h"
#include "platform/Platform.h"
#include "platform/text/TextPainter.h"

namespace {

using Gdiplus::Color;
using Gdiplus::Font;
using Gdiplus::FontFamily;
using Gdiplus::Graphics;
using Gdiplus::RectF;
using Gdiplus::SolidBrush;
using Gdiplus::StringFormat;

// A memory context of 120 x 60 transparent pixels.
class DrawStringTest : public testing::Test {
 protected:
  DrawStringTest() { SelectObject(&context, &bitmap); }

  static PixelSection MakeBitmap() {
    return {120, 60, std::make_unique<std::uint32_t[]>(std::size_t{120} * 60)};
  }

  std::vector<std::uint32_t> Pixels() const {
    return {bitmap.pixels.get(), bitmap.pixels.get() + std::size_t{120} * 60};
  }

  PixelSection bitmap = MakeBitmap();
  DeviceContext context;
  const SolidBrush brush{Color(0xC0112233)};
  const StringFormat format{0, LANG_NEUTRAL};
};

TEST_F(DrawStringTest, TextIsDrawnFromTheCornerOfItsAreaInTheFontAndTheBrush) {
  const FontFamily family(L"DejaVu Sans");
  const Font font(&family, 20, Gdiplus::FontStyleBold, Gdiplus::UnitPixel);
  Graphics graphics(&context);
  ASSERT_EQ(graphics.DrawString(L"Ada", -1, &font, RectF(7, 5, 0, 0), &format, &brush),
            Gdiplus::Ok);
  Canvas expected(120, 60, 0);
  PaintText(expected.View(), {"DejaVu Sans", true, 20, 0xC0112233}, L"Ada", 7, 5);
  EXPECT_EQ(Pixels(), expected.pixels);
  EXPECT_FALSE(expected.IsBlank());
}

TEST_F(DrawStringTest, AnUnknownFamilyFailsAndDrawsNothing) {
  const FontFamily family(L"No Such Face");
  EXPECT_EQ(family.GetLastStatus(), Gdiplus::FontFamilyNotFound);
  const Font font(&family, 20, Gdiplus::FontStyleBold, Gdiplus::UnitPixel);
  EXPECT_NE(font.GetLastStatus(), Gdiplus::Ok);
  Graphics graphics(&context);
  graphics.DrawString(L"Ada", -1, &font, RectF(7, 5, 0, 0), &format, &brush);
  EXPECT_NE(graphics.GetLastStatus(), Gdiplus::Ok);
  EXPECT_EQ(Pixels(), std::vector<std::uint32_t>(std::size_t{120} * 60, 0));
}

TEST_F(DrawStringTest, AFontNeedsAFamilyAndASizeInPixels) {
  const FontFamily family(L"DejaVu Sans");
  EXPECT_FALSE(Font(nullptr, 20, 1, Gdiplus::UnitPixel).IsAvailable());
  EXPECT_FALSE(Font(&family, 0, 1, Gdiplus::UnitPixel).IsAvailable());
  EXPECT_FALSE(Font(&family, 20, 1, Gdiplus::UnitWorld).IsAvailable());
  EXPECT_TRUE(Font(&family, 4294967295.0F, 1, Gdiplus::UnitPixel).IsAvailable());
}

}  // namespace
