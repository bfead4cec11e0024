#include "platform/text/TextPainter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <future>
#include <limits>

#include "Canvas.h"
#include "platform/text/FontFamilies.h"

namespace {

// Of the em square, in the family that these tests draw with.
constexpr double kCapitalHeight = 0.729;

TextStyle Style(double pixelSize, std::uint32_t color = kBlack) {
  return {"DejaVu Sans", false, pixelSize, color};
}

TEST(TextPainter, TextStandsRightOfAndBelowItsPointInItsSizeLineByLine) {
  // 256 is the largest size that is drawn glyph by glyph, 257 the smallest drawn by outlines.
  for (const double size : {20.0, 100.0, 256.0, 257.0, 600.0}) {
    Canvas canvas(700, 1500);
    PaintText(canvas.View(), Style(size), L"H", 50, 20);
    const RECT ink = canvas.InkBox();
    EXPECT_NEAR(ink.left, 50 + size / 10, size / 40 + 1) << size;
    EXPECT_NEAR(ink.top, 20 + size / 5, size / 20 + 2) << size;
    // Smoothing touches a pixel at either end, and small glyphs are fitted to whole pixels.
    EXPECT_NEAR(ink.bottom - ink.top, size * kCapitalHeight, 2) << size;
    PaintText(canvas.View(), Style(size), L"\nH", 50, 20);
    EXPECT_EQ(canvas.InkBox().right, ink.right);
    EXPECT_GT(canvas.InkBox().bottom, ink.bottom + size);
  }
}

TEST(TextPainter, EveryChineseCharacterHasItsOwnGlyphAndABolderOne) {
  const auto draw = [](const wchar_t* text, bool bold) {
    Canvas canvas(60, 60);
    PaintText(canvas.View(), {FindFontFamily("微软雅黑").value(), bold, 40, kBlack}, text, 5, 5);
    return canvas;
  };
  const Canvas regular = draw(L"\x5F20", false);
  EXPECT_FALSE(regular.IsBlank());
  EXPECT_GT(draw(L"\x5F20", true).Count(kBlack), regular.Count(kBlack));
  EXPECT_NE(draw(L"\x5E08", false).pixels, regular.pixels) << "the box of a missing character";
}

TEST(TextPainter, BothHalvesOfASurrogatePairAreOneCharacter) {
  Canvas pair(100, 60);
  Canvas whole(100, 60);
  Canvas half(100, 60);
  PaintText(pair.View(), Style(40), L"\xD835\xDD38", 5, 5);
  PaintText(whole.View(), Style(40), L"\x1D538", 5, 5);
  PaintText(half.View(), Style(40), L"\xD835", 5, 5);
  EXPECT_FALSE(pair.IsBlank());
  EXPECT_EQ(pair.pixels, whole.pixels);
  EXPECT_NE(pair.pixels, half.pixels);
}

TEST(TextPainter, ATranslucentColorLetsTheBackgroundThrough) {
  for (const double size : {40.0, 300.0}) {
    Canvas onWhite(300, 300);
    Canvas onNothing(300, 300, 0);
    PaintText(onWhite.View(), Style(size, 0x80000000), L"H", 0, 0);
    PaintText(onNothing.View(), Style(size, 0x80FF0000), L"H", 0, 0);
    EXPECT_GT(onWhite.Count(0xFF7F7F7F), 100U);
    EXPECT_GT(onNothing.Count(0x80800000), 100U);
  }
}

TEST(TextPainter, WhatLiesOffThePixelsIsCutAndNothingIsWrapped) {
  const std::wstring text = L"Grace Hopper, Ada Lovelace";
  // A large outline is cut before its edges are smoothed, which shows in the pixels at the cut.
  for (const auto& [size, tolerance] : {std::pair{30.0, 0}, {290.0, 16}}) {
    Canvas large(1200, 500);
    PaintText(large.View(), Style(size), text, 100, 60);
    for (const auto& [left, top] :
         {std::pair{120, 80}, {0, 0}, {110, 70}, {900, 150}, {350, 300}}) {
      Canvas part(150, 100);
      PaintText(part.View(), Style(size), text, 100 - left, 60 - top);
      EXPECT_LE(large.DifferenceAt(left, top, part), tolerance)
          << size << " at " << left << ", " << top;
    }
  }
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
        EXPECT_TRUE(area.left >= 0 && area.top >= 0 && area.right <= 200 && area.bottom <= 120);
      }
    }
  }
}

TEST(TextPainter, AStemLargerThanTheSurfaceCoversItAll) {
  // The left stem of this letter lies 0.1 to 0.2 em from its origin.
  for (const double size : {5000.0, 100000.0, 400000.0}) {
    Canvas canvas(50, 50);
    PaintText(canvas.View(), Style(size), L"HHHH", -0.15 * size, -0.6 * size);
    EXPECT_EQ(canvas.Count(kBlack), canvas.pixels.size()) << size;
  }
}

TEST(TextPainter, NoSizePositionOrLengthIsTooMuch) {
  constexpr double kHuge = std::numeric_limits<double>::max();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  const std::wstring endless(1'000'000, L'\x597D');
  const std::wstring lines(1'000'000, L'\n');
  for (const double size :
       {-1.0, 0.0, 1e-30, 0.4, 1.0, 18.0, 256.5, 1e6, kHuge, kInfinity, kNone}) {
    for (const double place : {-kHuge, -1e9, -40.0, 3.0, 2147483647.0, kHuge, kInfinity, kNone}) {
      Canvas canvas(60, 40);
      PaintText(canvas.View(), Style(size), L"\xDC00g\t\x1F600\x0301\xFDFD", place, -place);
      if (!(std::abs(place) < 1e6) || !(size > 0)) {
        EXPECT_TRUE(canvas.IsBlank()) << size << " at " << place;
      }
    }
    Canvas canvas(60, 40);
    PaintText(canvas.View(), Style(size), endless, 0, 0);
    PaintText(canvas.View(), Style(size), lines, 0, 0);
  }
  PaintText({}, Style(18), L"x", 0, 0);
}

TEST(TextPainter, SeveralThreadsDrawTheSameAsOne) {
  const auto draw = [] {
    Canvas canvas(300, 60);
    for (int i = 0; i < 20; ++i) {
      const std::string family = FindFontFamily(i % 2 == 0 ? "微软雅黑" : "DejaVu Sans").value();
      PaintText(canvas.View(), {family, true, 10.0 + i, 0x20000000}, L"Ada \x5F20", 5 * i, 5);
    }
    return canvas.pixels;
  };
  auto other = std::async(std::launch::async, draw);
  EXPECT_EQ(draw(), other.get());
}

}  // namespace
