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

  static PixelSection MakeBitmap() { return {120, 60, AllocatePixels(std::size_t{120} * 60)}; }

  std::vector<std::uint32_t> Pixels() const {
    return {bitmap.pixels.get(), bitmap.pixels.get() + std::size_t{120} * 60};
  }

  PixelSection bitmap = MakeBitmap();
  DeviceContext context;
  const SolidBrush brush{Color(0xC0112233)};
  const StringFormat format{0, LANG_NEUTRAL};
};

// As a name beside a mark is, for as long as it is shown.
TEST_F(DrawStringTest, TextOfTheFrameBeforeStaysAndOtherTextReplacesIt) {
  const FontFamily family(L"DejaVu Sans");
  const Font font(&family, 20, Gdiplus::FontStyleBold, Gdiplus::UnitPixel);
  const SolidBrush red{Color(0xFFFF0000)};
  Graphics graphics(&context);
  const auto show = [&](const wchar_t* text, const SolidBrush& ink, float x) {
    graphics.Clear(Color(0));
    graphics.DrawString(text, -1, &font, RectF(x, 5, 0, 0), &format, &ink);
    graphics.Flush();
    return bitmap.version;
  };
  const auto painted = [&](const wchar_t* text, std::uint32_t color, double x) {
    Canvas expected(120, 60, 0);
    PaintText(expected.View(), {"DejaVu Sans", true, 20, color}, text, x, 5);
    return expected.pixels;
  };
  const std::uint64_t first = show(L"Ada", brush, 7);
  EXPECT_EQ(first, show(L"Ada", brush, 7)) << "nothing has changed";
  EXPECT_EQ(painted(L"Ada", 0xC0112233, 7), Pixels());
  EXPECT_LT(first, show(L"Ada", red, 7));
  EXPECT_EQ(painted(L"Ada", 0xFFFF0000, 7), Pixels());
  show(L"Ida", red, 7);
  EXPECT_EQ(painted(L"Ida", 0xFFFF0000, 7), Pixels());
  show(L"Ida", red, -9);
  EXPECT_EQ(painted(L"Ida", 0xFFFF0000, -9), Pixels()) << "cut by the surface's edge";
  show(L"Ida", red, 500);
  EXPECT_EQ(painted(L"", 0, 0), Pixels()) << "off the surface";
}

TEST_F(DrawStringTest, AnUnknownFamilyFailsAndDrawsNothing) {
  const FontFamily family(L"No Such Face");
  EXPECT_EQ(family.GetLastStatus(), Gdiplus::FontFamilyNotFound);
  const Font font(&family, 20, Gdiplus::FontStyleBold, Gdiplus::UnitPixel);
  EXPECT_NE(font.GetLastStatus(), Gdiplus::Ok);
  Graphics graphics(&context);
  graphics.DrawString(L"Ada", -1, &font, RectF(7, 5, 0, 0), &format, &brush);
  EXPECT_NE(graphics.GetLastStatus(), Gdiplus::Ok);
  graphics.Flush();
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
