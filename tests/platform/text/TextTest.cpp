// Text, painted and by the interface of the page's frames.
#include "platform/text/TextPainter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "platform/text/FontFamilies.h"
#include "support/DrawnBitmap.h"

namespace {

using Gdiplus::Color;
using Gdiplus::Font;
using Gdiplus::FontFamily;
using Gdiplus::SolidBrush;

// All tests of this program see the machine's fonts through the configuration beside this file.
class FontConfiguration : public testing::Environment {
 public:
  void SetUp() override { setenv("FONTCONFIG_FILE", PARCHLET_FONTS_CONFIGURATION, 1); }
};

[[maybe_unused]] const auto* const kConfiguration =
    testing::AddGlobalTestEnvironment(new FontConfiguration);

// A white or clear bitmap with text on it.
Frame Paint(int width, int height, const TextStyle& style, std::wstring_view text, double x,
            double y, std::uint32_t background = kWhite) {
  Frame frame({width, height,
               std::vector<std::uint32_t>(static_cast<std::size_t>(width) * height, background)});
  PaintText({frame.pixels.data(), width, height}, style, text, x, y);
  return frame;
}

std::ptrdiff_t CountOf(std::uint32_t color, const Frame& frame) {
  return std::count(frame.pixels.begin(), frame.pixels.end(), color);
}

TEST(FontFamilies, AFamilyAnswersToItsNameInAnySpellingAndToItsAliases) {
  EXPECT_EQ(FindFontFamily("DejaVu Sans"), "DejaVu Sans");
  EXPECT_TRUE(FindFontFamily("dejavu SANS").has_value());
  EXPECT_EQ(FindFontFamily("House Face"), "DejaVu Sans Mono");
  EXPECT_TRUE(FindFontFamily("微软雅黑").has_value());
  for (const char* fallback : {"No Such Face", "Ruined House Face", ""}) {
    EXPECT_EQ(FindFontFamily(fallback), std::nullopt) << "what any name falls back to";
  }
}

TextStyle Style(double pixelSize, std::uint32_t color = kBlack) {
  return {"DejaVu Sans", false, pixelSize, color};
}

TEST(TextPainter, TextStandsRightOfAndBelowItsPointInItsSizeLineByLine) {
  // 256 is the largest size that is drawn glyph by glyph, 257 the smallest drawn by outlines.
  for (const double size : {20.0, 256.0, 257.0, 600.0}) {
    const RECT ink = Paint(700, 1500, Style(size), L"H", 50, 20).InkBox();
    EXPECT_NEAR(ink.left, 50 + size / 10, size / 40 + 1) << size;
    EXPECT_NEAR(ink.top, 20 + size / 5, size / 20 + 2) << size;
    // A capital is 0.729 em high. Smoothing touches a pixel at either end.
    EXPECT_NEAR(ink.bottom - ink.top, size * 0.729, 2) << size;
    const RECT both = Paint(700, 1500, Style(size), L"H\nH", 50, 20).InkBox();
    EXPECT_EQ(both.right, ink.right);
    EXPECT_GT(both.bottom, ink.bottom + size);
  }
}

TEST(TextPainter, EveryCharacterHasItsOwnGlyphAndABolderOne) {
  const auto draw = [](const wchar_t* text, bool bold = false, std::uint32_t color = kBlack) {
    return Paint(60, 60, {FindFontFamily("微软雅黑").value(), bold, 40, color}, text, 5, 5);
  };
  const Frame regular = draw(L"\x5F20");
  EXPECT_GT(CountOf(kBlack, regular), 0);
  EXPECT_GT(CountOf(kBlack, draw(L"\x5F20", true)), CountOf(kBlack, regular));
  EXPECT_NE(draw(L"\x5E08").pixels, regular.pixels) << "the box of a missing character";
  EXPECT_EQ(draw(L"\xD835\xDD38").pixels, draw(L"\x1D538").pixels) << "a surrogate pair";
  EXPECT_GT(CountOf(0xFF7F7F7F, draw(L"H", true, 0x80000000)), 20) << "what lies below shows";
}

TEST(TextPainter, NoInkLiesOutsideTheAreaFound) {
  for (const double size : {0.5, 3.0, 18.0, 40.5, 256.0, 300.0, 3000.0}) {
    for (const double x : {-20.25, 0.0, 31.5, 190.0, 1000.0}) {
      for (const wchar_t* text : {L"Ag\x4F60", L"j", L" ", L"H\nfj"}) {
        const RECT ink = Paint(200, 120, Style(size), text, x, 11.75).InkBox();
        const RECT area = FindTextArea(Style(size), text, x, 11.75, {200, 120});
        EXPECT_TRUE(ink.right == 0 || (area.left <= ink.left && area.top <= ink.top &&
                                       area.right >= ink.right && area.bottom >= ink.bottom))
            << size << " at " << x;
      }
    }
  }
}

TEST(TextPainter, NoSizePositionOrLengthIsTooMuch) {
  constexpr double kHuge = std::numeric_limits<double>::max();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  for (const double size : {-1.0, 0.0, 1e-30, 0.4, 18.0, 256.5, 1e6, kHuge, kInfinity, kNone}) {
    for (const double place : {-kHuge, -1e9, -40.0, 3.0, 2147483647.0, kHuge, kInfinity, kNone}) {
      const Frame shown =
          Paint(60, 40, Style(size), L"\xDC00g\t\x1F600\x0301\xFDFD", place, -place);
      const bool mayShow = std::abs(place) < 1e6 && size > 0;
      EXPECT_TRUE(mayShow || shown.InkBox().right == 0) << size << " at " << place;
    }
    Paint(60, 40, Style(size), std::wstring(1'000'000, L'\x597D'), 0, 0);
    Paint(60, 40, Style(size), std::wstring(1'000'000, L'\n'), 0, 0);
  }
  PaintText({}, Style(18), L"x", 0, 0);
}

class DrawStringTest : public testing::Test {
 protected:
  DrawnBitmap shown{120, 60};
  Gdiplus::Graphics& graphics = shown.graphics;
  const SolidBrush brush{Color(0xC0112233)};
  const Gdiplus::StringFormat format{0, LANG_NEUTRAL};
};

TEST_F(DrawStringTest, TextOfTheFrameBeforeStaysAndOtherTextReplacesIt) {
  const FontFamily family(L"DejaVu Sans");
  const Font font(&family, 20, Gdiplus::FontStyleBold, Gdiplus::UnitPixel);
  const SolidBrush red{Color(0xFFFF0000)};
  const auto show = [&](const wchar_t* text, const SolidBrush& ink, float x) {
    graphics.Clear(Color(0));
    graphics.DrawString(text, -1, &font, Gdiplus::RectF(x, 5, 0, 0), &format, &ink);
    graphics.Flush();
    return shown.bitmap.version;
  };
  const auto painted = [&](const wchar_t* text, std::uint32_t color, double x) {
    return Paint(120, 60, {"DejaVu Sans", true, 20, color}, text, x, 5, kClear).pixels;
  };
  const std::uint64_t first = show(L"Ada", brush, 7);
  EXPECT_EQ(first, show(L"Ada", brush, 7)) << "nothing has changed";
  EXPECT_EQ(painted(L"Ada", 0xC0112233, 7), shown.Show().pixels);
  EXPECT_LT(first, show(L"Ada", red, 7));
  EXPECT_EQ(painted(L"Ada", 0xFFFF0000, 7), shown.Show().pixels);
  show(L"Ida", red, 7);
  EXPECT_EQ(painted(L"Ida", 0xFFFF0000, 7), shown.Show().pixels);
  show(L"Ida", red, -9);
  EXPECT_EQ(painted(L"Ida", 0xFFFF0000, -9), shown.Show().pixels) << "cut by the surface's edge";
}

TEST_F(DrawStringTest, WithoutAFamilyOrASizeInPixelsNothingIsDrawn) {
  const FontFamily unknown(L"No Such Face");
  EXPECT_EQ(unknown.GetLastStatus(), Gdiplus::FontFamilyNotFound);
  const FontFamily family(L"DejaVu Sans");
  EXPECT_TRUE(Font(&family, 4294967295.0F, 1, Gdiplus::UnitPixel).IsAvailable());
  const Font fonts[] = {{&unknown, 20, 1, Gdiplus::UnitPixel},
                        {nullptr, 20, 1, Gdiplus::UnitPixel},
                        {&family, 0, 1, Gdiplus::UnitPixel},
                        {&family, 20, 1, Gdiplus::UnitWorld}};
  for (const Font& font : fonts) {
    EXPECT_FALSE(font.IsAvailable());
    graphics.DrawString(L"Ada", -1, &font, Gdiplus::RectF(7, 5, 0, 0), &format, &brush);
    EXPECT_NE(graphics.GetLastStatus(), Gdiplus::Ok);
  }
  EXPECT_THAT(shown.Show(), IsAll(kClear));
}

}  // namespace
