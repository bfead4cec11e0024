// Families of fonts, and text by the interface of the page's frames.
#include "TextCanvas.h"

#include <gtest/gtest.h>

#include <cstdlib>

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

TEST(FontFamilies, AFamilyAnswersToItsNameInAnySpellingAndToItsAliases) {
  EXPECT_EQ(FindFontFamily("DejaVu Sans"), "DejaVu Sans");
  EXPECT_TRUE(FindFontFamily("dejavu SANS").has_value());
  EXPECT_EQ(FindFontFamily("House Face"), "DejaVu Sans Mono");
  EXPECT_TRUE(FindFontFamily("微软雅黑").has_value());
  for (const char* fallback : {"No Such Face", "Ruined House Face", ""}) {
    EXPECT_EQ(FindFontFamily(fallback), std::nullopt) << "what any name falls back to";
  }
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
    Canvas expected(120, 60, 0);
    PaintText(expected.View(), {"DejaVu Sans", true, 20, color}, text, x, 5);
    return expected.pixels;
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
