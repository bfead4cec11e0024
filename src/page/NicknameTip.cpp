#include "page/NicknameTip.h"

#include <cmath>

#include <parchlet/Utils.h>

#include "annotation/PixelMath.h"

namespace {

constexpr std::uint64_t kShownMs = 2000;  // how long a tip stays
constexpr std::uint64_t kQuietMs = 5000;  // from one tip of an author to the next
constexpr int kMaxNicknameWidth = 10;

// The start of a box of that extent: at the anchor, pushed back inside the page, cut at 0.
int PlaceInside(std::int64_t anchor, std::int64_t extent, std::int64_t pageExtent) {
  const std::int64_t start = anchor + extent > pageExtent ? pageExtent - extent : anchor;
  return SaturatingPixel(std::max<std::int64_t>(start, 0));
}

}  // namespace

bool TipSchedule::IsTipVisible(const std::string& userId, const std::string& annotationId,
                               std::uint64_t now) {
  const auto found = tipHistory.find(userId);
  if (found == tipHistory.end()) {
    tipHistory.emplace(userId, TipRecord{annotationId, now});
    return true;
  }
  const std::uint64_t shownFor = now - found->second.shownTick;
  const bool isSame = found->second.annotationId == annotationId;
  if (isSame && shownFor < kShownMs) {
    return true;
  }
  if (shownFor < kQuietMs) {
    return false;
  }
  if (isSame) {
    tipHistory.erase(found);
    return false;
  }
  found->second = TipRecord{annotationId, now};
  return true;
}

std::string ShortenNickname(const std::string& text, int maxWidth, int& narrowCount,
                            int& wideCount) {
  narrowCount = 0;
  wideCount = 0;
  if (maxWidth < 1) {
    return {};
  }
  std::int64_t width = 0;
  std::size_t at = 0;
  while (at < text.size()) {
    const bool isWide = static_cast<unsigned char>(text[at]) >= 0x80;
    width += isWide ? 2 : 1;
    if (width == maxWidth || width == std::int64_t{maxWidth} + 1) {
      return text.substr(0, at) + "...";
    }
    ++(isWide ? wideCount : narrowCount);
    at += isWide ? 3 : 1;
  }
  return text;
}

void DrawNicknameTip(Gdiplus::Graphics& graphics, const NicknameTipStyle& style,
                     CurrentAnnotPageSize size, const std::string& nickname,
                     const AnnotationPoint& at) {
  int narrow = 0;
  int wide = 0;
  const std::wstring text =
      Utils::Utf8ToUnicode(ShortenNickname(nickname, kMaxNicknameWidth, narrow, wide));
  const double fontSize = style.fontSize;
  const auto units =
      static_cast<std::int64_t>(std::floor(narrow * 0.75 + 0.5) + std::ceil(wide * 1.1));
  const int boxWidth = SaturatingPixel(units * std::int64_t{style.fontSize});
  const int boxHeight = SaturatingPixel(fontSize * 1.5);
  const int x = PlaceInside(SaturatingPixel(size.width * at.xRatio), boxWidth, size.width);
  const int y = PlaceInside(SaturatingPixel(size.height * at.yRatio), boxHeight, size.height);

  const Gdiplus::FontFamily family(style.fontFamily.c_str());
  const Gdiplus::Font font(&family, static_cast<Gdiplus::REAL>(fontSize), Gdiplus::FontStyleBold,
                           Gdiplus::UnitPixel);
  Gdiplus::StringFormat format(0, LANG_NEUTRAL);
  format.SetAlignment(Gdiplus::StringAlignmentNear);
  format.SetLineAlignment(Gdiplus::StringAlignmentNear);
  const Gdiplus::SolidBrush box{Gdiplus::Color(style.boxColor)};
  graphics.FillRectangle(&box, x, y, boxWidth, boxHeight);
  const Gdiplus::SolidBrush ink{Gdiplus::Color(style.textColor)};
  const Gdiplus::RectF layout(static_cast<Gdiplus::REAL>(x), static_cast<Gdiplus::REAL>(y), 0, 0);
  graphics.DrawString(text.c_str(), -1, &font, layout, &format, &ink);
}
