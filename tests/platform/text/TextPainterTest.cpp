// Text onto pixels.
#include "platform/text/TextPainter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/text/FontFamilies.h"
#include "TextCanvas.h"

namespace {

TextStyle Style(double pixelSize, std::uint32_t color = kBlack) {
  return {"DejaVu Sans", false, pixelSize, color};
}

TEST(TextPainter, TextStandsRightOfAndBelowItsPointInItsSizeLineByLine) {
  // 256 is the largest size that is drawn glyph by glyph, 257 the smallest drawn by outlines.
  for (const double size : {20.0, 256.0, 257.0, 600.0}) {
    Canvas canvas(700, 1500);
    PaintText(canvas.View(), Style(size), L"H", 50, 20);
    const RECT ink = canvas.InkBox();
    EXPECT_NEAR(ink.left, 50 + size / 10, size / 40 + 1) << size;
    EXPECT_NEAR(ink.top, 20 + size / 5, size / 20 + 2) << size;
    // A capital is 0.729 em high. Smoothing touches a pixel at either end.
    EXPECT_NEAR(ink.bottom - ink.top, size * 0.729, 2) << size;
    PaintText(canvas.View(), Style(size), L"\nH", 50, 20);
    EXPECT_EQ(canvas.InkBox().right, ink.right);
    EXPECT_GT(canvas.InkBox().bottom, ink.bottom + size);
  }
}

TEST(TextPainter, EveryCharacterHasItsOwnGlyphAndABolderOne) {
  const auto draw = [](const wchar_t* text, bool bold = false, std::uint32_t color = kBlack) {
    Canvas canvas(60, 60);
    PaintText(canvas.View(), {FindFontFamily("微软雅黑").value(), bold, 40, color}, text, 5, 5);
    return canvas;
  };
  const Canvas regular = draw(L"\x5F20");
  EXPECT_FALSE(regular.IsBlank());
  EXPECT_GT(draw(L"\x5F20", true).Count(kBlack), regular.Count(kBlack));
  EXPECT_NE(draw(L"\x5E08").pixels, regular.pixels) << "the box of a missing character";
  EXPECT_EQ(draw(L"\xD835\xDD38").pixels, draw(L"\U0001D538").pixels) << "a surrogate pair";
  EXPECT_GT(draw(L"H", true, 0x80000000).Count(0xFF7F7F7F), 20U) << "what lies below shows through";
}

TEST(TextPainter, OutlinesFillWhatGlyphsFill) {
  const auto paint = [](double size) {
    Canvas canvas(1100, 400);
    PaintText(canvas.View(), Style(size), L"B%i\x4F60", 10, 10);
    return canvas.Count(kBlack);
  };
  const auto glyphs = static_cast<double>(paint(256));
  EXPECT_NEAR(static_cast<double>(paint(257)), glyphs, glyphs / 40);
}

TEST(TextPainter, NoInkLiesOutsideTheAreaFound) {
  for (const double size : {0.5, 3.0, 18.0, 40.5, 256.0, 300.0, 3000.0}) {
    for (const double x : {-20.25, 0.0, 31.5, 190.0, 1000.0}) {
      for (const wchar_t* text : {L"Ag\x4F60", L"j", L" ", L"H\nfj"}) {
        Canvas canvas(200, 120);
        PaintText(canvas.View(), Style(size), text, x, 11.75);
        const RECT ink = canvas.InkBox();
        const RECT area = FindTextArea(Style(size), text, x, 11.75, {200, 120});
        EXPECT_TRUE(canvas.IsBlank() || (area.left <= ink.left && area.top <= ink.top &&
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
      Canvas canvas(60, 40);
      PaintText(canvas.View(), Style(size), L"\xDC00g\t\U0001F600\x0301\xFDFD", place, -place);
      const bool mayShow = std::abs(place) < 1e6 && size > 0;
      EXPECT_TRUE(mayShow || canvas.IsBlank()) << size << " at " << place;
    }
    Canvas canvas(60, 40);
    PaintText(canvas.View(), Style(size), std::wstring(1'000'000, L'\x597D'), 0, 0);
    PaintText(canvas.View(), Style(size), std::wstring(1'000'000, L'\n'), 0, 0);
  }
  PaintText({}, Style(18), L"x", 0, 0);
}

}  // namespace
