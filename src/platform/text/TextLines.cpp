#include "platform/text/TextLines.h"

namespace {

constexpr std::size_t kTabStops = 8;
constexpr wchar_t kLineSeparator = 0x2028;
constexpr wchar_t kParagraphSeparator = 0x2029;

bool EndsLine(wchar_t unit) {
  return unit == L'\n' || unit == L'\r' || unit == kLineSeparator || unit == kParagraphSeparator;
}

bool IsControl(wchar_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

}  // namespace

std::vector<std::wstring> SplitLines(std::wstring_view text, std::size_t maxUnits) {
  text = text.substr(0, maxUnits);
  std::vector<std::wstring> lines(1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t unit = text[i];
    std::wstring& line = lines.back();
    if (EndsLine(unit)) {
      i += text.substr(i, 2) == L"\r\n" ? 1 : 0;
      lines.emplace_back();
    } else if (unit == L'\t') {
      line.append(kTabStops - line.size() % kTabStops, L' ');
    } else {
      line += IsControl(unit) ? L' ' : unit;
    }
  }
  return lines;
}
