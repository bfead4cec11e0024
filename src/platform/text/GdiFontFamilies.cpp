#include <windows.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/text/FontFamilies.h"
#include "platform/text/MemoryDc.h"
#include "platform/text/Unicode.h"

namespace {

constexpr std::array<std::wstring_view, 2> kDefaultFamily = {L"\x5FAE\x8F6F\x96C5\x9ED1",
                                                             L"Microsoft YaHei"};

// A family that the system names, and how well it fits.
struct Found {
  std::wstring name;
  int rank = 0;
};

// Without serifs, and with letters of their own widths each.
int RankOf(const LOGFONTW& font) {
  const int family = font.lfPitchAndFamily & 0xF0;
  const int pitch = font.lfPitchAndFamily & 0x03;
  return (family == FF_SWISS      ? 4
          : family == FF_DONTCARE ? 2
                                  : 0) +
         (pitch == VARIABLE_PITCH ? 1 : 0) + 1;
}

int CALLBACK KeepBest(const LOGFONTW* font, const TEXTMETRICW* /*metrics*/, DWORD /*type*/,
                      LPARAM context) {
  auto& best = *reinterpret_cast<Found*>(context);
  const int rank = RankOf(*font);
  // A name that starts so is of a face for columns of text; its glyphs are turned.
  if (font->lfFaceName[0] != L'@' && rank > best.rank) {
    try {
      best = {font->lfFaceName, rank};
    } catch (...) {
      return 0;  // out of memory: what was found so far must do
    }
  }
  return 1;
}

// The best family of that name, any if it is empty, that has the characters of that set.
std::wstring FindBest(std::wstring_view name, BYTE charset) {
  const MemoryDc context;
  LOGFONTW wanted{};
  wanted.lfCharSet = charset;
  std::copy(name.begin(), name.end(), wanted.lfFaceName);
  Found best;
  EnumFontFamiliesExW(context.Get(), &wanted, KeepBest, reinterpret_cast<LPARAM>(&best), 0);
  return best.name;
}

bool IsDefaultFamily(const std::wstring& name) {
  return std::any_of(
      kDefaultFamily.begin(), kDefaultFamily.end(), [&name](std::wstring_view known) {
        return CompareStringOrdinal(known.data(), static_cast<int>(known.size()), name.data(),
                                    static_cast<int>(name.size()), TRUE) == CSTR_EQUAL;
      });
}

// What the system itself writes with; for a character that it lacks the system takes another one.
std::wstring SystemFamily() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  return SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) != FALSE
             ? metrics.lfMessageFont.lfFaceName
             : L"";
}

}  // namespace

std::optional<std::string> FindFontFamily(const std::string& name) {
  const std::wstring wide = DecodeUtf8(name);
  if (wide.empty() || wide.size() >= LF_FACESIZE || wide[0] == L'@' ||
      wide.find(L'\0') != std::wstring::npos) {
    return std::nullopt;
  }
  std::wstring found = FindBest(wide, DEFAULT_CHARSET);
  if (found.empty() && IsDefaultFamily(wide)) {
    found = FindBest({}, GB2312_CHARSET);
    if (found.empty()) {
      found = SystemFamily();
    }
  }
  return found.empty() ? std::nullopt : std::optional(EncodeUtf8(found));
}
