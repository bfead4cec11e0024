#include <windows.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/text/MemoryDc.h"
#include "platform/text/OutlineCoverage.h"
#include "platform/text/TextLines.h"
#include "platform/text/TextPainter.h"
#include "platform/text/Unicode.h"

namespace {

// Text of these sizes is drawn glyph by glyph, fitted to the pixels; other text as scaled outlines.
constexpr double kSmallestFitted = 1;
constexpr double kLargestFitted = 256;
// What outlines are taken at: the units of most fonts.
constexpr double kOutlineSize = 2048;
// Past this size a stem is wider than any surface.
constexpr double kLargest = 1 << 19;
// Text is cut where it is past the widest surface, counting a quarter of an em a character.
constexpr double kMaxWidth = 4 * 32768;
constexpr double kMaxUnits = 16384;
constexpr double kMinUnits = 64;
constexpr std::size_t kMaxLineUnits = 8192;  // GDI's own limit
// Glyphs may reach so far past the box of their line, in its heights.
constexpr double kOverhang = 0.25;
// Smoothing and fitting move an edge by less than this, in pixels.
constexpr double kFringe = 2;

// Text in a font, and how it is brought to the surface.
class LaidOutText {
 public:
  LaidOutText(const TextStyle& style, std::wstring_view text)
      : isFitted(style.pixelSize >= kSmallestFitted && style.pixelSize <= kLargestFitted),
        fontHeight(isFitted ? std::lround(style.pixelSize) : std::lround(kOutlineSize)),
        scale(isFitted ? 1 : std::min(style.pixelSize, kLargest) / kOutlineSize),
        font(MakeFont(style, fontHeight)),
        lines(SplitLines(text, UnitsFor(std::min(style.pixelSize, kLargest)))) {
    SelectObject(context.Get(), font.Get());
    SetTextAlign(context.Get(), TA_LEFT | TA_TOP);
    SetBkMode(context.Get(), TRANSPARENT);
    TEXTMETRICW metrics{};
    GetTextMetricsW(context.Get(), &metrics);
    lineHeight = metrics.tmHeight + metrics.tmExternalLeading;
  }

  // The box that PaintText changes no pixel outside of.
  RECT Area(double x, double y, const TextSurface& surface) const {
    LONG widest = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (IsLineShown(i, y, surface.height)) {
        SIZE size{};
        GetTextExtentPoint32W(context.Get(), lines[i].data(), UnitsOf(lines[i]), &size);
        widest = std::max(widest, size.cx);
      }
    }
    if (widest <= 0 || lineHeight <= 0) {
      return {};
    }
    const auto limit = [](double value, int most) {
      return static_cast<LONG>(std::clamp(value, 0.0, static_cast<double>(most)));
    };
    const double reach = Overhang();
    const double height = static_cast<double>(lines.size()) * lineHeight * scale;
    return {limit(std::floor(x - reach), surface.width),
            limit(std::floor(y - reach), surface.height),
            limit(std::ceil(x + widest * scale + reach), surface.width),
            limit(std::ceil(y + height + reach), surface.height)};
  }

  // The coverage of the area's pixels, row by row; empty when memory for it is refused.
  std::vector<std::uint8_t> Cover(double x, double y, const RECT& area) const {
    const int width = static_cast<int>(area.right - area.left);
    const int height = static_cast<int>(area.bottom - area.top);
    return isFitted ? Fitted(x - area.left, y - area.top, width, height)
                    : Outlined(x - area.left, y - area.top, width, height);
  }

 private:
  static std::size_t UnitsFor(double size) {
    return static_cast<std::size_t>(std::min(kMinUnits + kMaxWidth / size, kMaxUnits));
  }

  static HFONT MakeFont(const TextStyle& style, long height) {
    LOGFONTW font{};
    font.lfHeight = -height;
    font.lfWeight = style.bold ? FW_BOLD : FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfOutPrecision = OUT_TT_PRECIS;
    font.lfQuality = ANTIALIASED_QUALITY;
    const std::wstring family = DecodeUtf8(style.family).substr(0, LF_FACESIZE - 1);
    std::copy(family.begin(), family.end(), font.lfFaceName);
    return CreateFontIndirectW(&font);
  }

  static int UnitsOf(const std::wstring& line) {
    return static_cast<int>(std::min(line.size(), kMaxLineUnits));
  }

  double Overhang() const { return lineHeight * kOverhang * scale + kFringe; }

  double LineTop(std::size_t line, double y) const {
    return y + static_cast<double>(line) * lineHeight * scale;
  }

  bool IsLineShown(std::size_t line, double y, int height) const {
    const double top = LineTop(line, y);
    return top + lineHeight * scale + Overhang() > 0 && top - Overhang() < height;
  }

  // White on black; any channel is the coverage. The position is within GDI's range: an area that
  // is not empty lies no further from it than the text is wide.
  std::vector<std::uint8_t> Fitted(double x, double y, int width, int height) const {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // the top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* memory = nullptr;
    const GdiObject bitmap(
        CreateDIBSection(context.Get(), &info, DIB_RGB_COLORS, &memory, nullptr, 0));
    if (bitmap.Get() == nullptr) {
      return {};
    }
    const HGDIOBJ before = SelectObject(context.Get(), bitmap.Get());
    SetTextColor(context.Get(), RGB(255, 255, 255));
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (IsLineShown(i, y, height)) {
        TextOutW(context.Get(), static_cast<int>(std::floor(x + 0.5)),
                 static_cast<int>(std::floor(LineTop(i, y) + 0.5)), lines[i].data(),
                 UnitsOf(lines[i]));
      }
    }
    GdiFlush();
    const auto* pixels = static_cast<const std::uint32_t*>(memory);
    std::vector<std::uint8_t> coverage(static_cast<std::size_t>(width) *
                                       static_cast<std::size_t>(height));
    std::transform(pixels, pixels + coverage.size(), coverage.begin(),
                   [](std::uint32_t pixel) { return static_cast<std::uint8_t>(pixel >> 8); });
    SelectObject(context.Get(), before);
    return coverage;
  }

  std::vector<std::uint8_t> Outlined(double x, double y, int width, int height) const {
    OutlineCoverage coverage(width, height);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (IsLineShown(i, y, height)) {
        AddOutlines(lines[i], x, LineTop(i, y), coverage);
      }
    }
    return coverage.Coverage();
  }

  void AddOutlines(const std::wstring& line, double x, double y, OutlineCoverage& coverage) const {
    BeginPath(context.Get());
    TextOutW(context.Get(), 0, 0, line.data(), UnitsOf(line));
    EndPath(context.Get());
    FlattenPath(context.Get());
    const int count = GetPath(context.Get(), nullptr, nullptr, 0);
    if (count <= 0) {
      return;
    }
    std::vector<POINT> points(static_cast<std::size_t>(count));
    std::vector<BYTE> types(static_cast<std::size_t>(count));
    GetPath(context.Get(), points.data(), types.data(), count);
    const auto at = [&](std::size_t i) {
      return OutlinePoint{x + points[i].x * scale, y + points[i].y * scale};
    };
    std::size_t start = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
      if (types[i] == PT_MOVETO) {
        coverage.AddEdge(at(i - 1), at(start));
        start = i;
      } else {
        coverage.AddEdge(at(i - 1), at(i));
      }
    }
    coverage.AddEdge(at(points.size() - 1), at(start));
  }

  bool isFitted;
  long fontHeight;
  double scale;  // from the font's height to the text's
  GdiObject font;
  MemoryDc context;  // ends before the font that is selected into it
  std::vector<std::wstring> lines;
  LONG lineHeight = 0;
};

std::uint32_t Scaled(std::uint32_t channel, std::uint32_t share) {
  return (channel * share + 127) / 255;
}

// `argb` is not premultiplied, the pixel is.
std::uint32_t BlendOver(std::uint32_t pixel, std::uint32_t argb, std::uint32_t coverage) {
  const std::uint32_t alpha = Scaled(argb >> 24, coverage);
  std::uint32_t blended = 0;
  for (const int shift : {0, 8, 16, 24}) {
    const std::uint32_t ink = shift == 24 ? 255 : argb >> shift & 0xFF;
    const std::uint32_t ground = pixel >> shift & 0xFF;
    blended |= std::min(Scaled(ink, alpha) + Scaled(ground, 255 - alpha), 255U) << shift;
  }
  return blended;
}

bool IsDrawable(const TextStyle& style, std::wstring_view text, double x, double y) {
  return style.pixelSize > 0 && std::isfinite(x) && std::isfinite(y) && !text.empty();
}

bool IsEmpty(const RECT& area) {
  return area.left >= area.right || area.top >= area.bottom;
}

}  // namespace

RECT FindTextArea(const TextStyle& style, std::wstring_view text, double x, double y,
                  const TextSurface& surface) {
  return IsDrawable(style, text, x, y) ? LaidOutText(style, text).Area(x, y, surface) : RECT{};
}

void PaintText(const PixelView& pixels, const TextStyle& style, std::wstring_view text, double x,
               double y) {
  if (pixels.pixels == nullptr || !IsDrawable(style, text, x, y)) {
    return;
  }
  const LaidOutText laidOut(style, text);
  const RECT area = laidOut.Area(x, y, {pixels.width, pixels.height});
  if (IsEmpty(area)) {
    return;
  }
  const std::vector<std::uint8_t> coverage = laidOut.Cover(x, y, area);
  const auto width = static_cast<std::size_t>(area.right - area.left);
  for (std::size_t i = 0; i < coverage.size(); ++i) {
    if (coverage[i] != 0) {
      const std::size_t row = static_cast<std::size_t>(area.top) + i / width;
      const std::size_t column = static_cast<std::size_t>(area.left) + i % width;
      std::uint32_t& pixel = pixels.pixels[row * static_cast<std::size_t>(pixels.width) + column];
      pixel = BlendOver(pixel, style.color, coverage[i]);
    }
  }
}
