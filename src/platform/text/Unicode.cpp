#include "platform/text/Unicode.h"

#include <array>
#include <cstdint>

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLast = 0x10FFFF;

bool IsSurrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDFFF;
}

void AppendUtf16(char32_t c, std::wstring& out) {
  if (c < 0x10000) {
    out.push_back(static_cast<wchar_t>(c));
    return;
  }
  out.push_back(static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)));
  out.push_back(static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
}

void AppendUtf8(char32_t c, std::string& out) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
    return;
  }
  const int followers = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
  constexpr std::array<char32_t, 4> kLead = {0, 0xC0, 0xE0, 0xF0};
  out.push_back(
      static_cast<char>(kLead.at(static_cast<std::size_t>(followers)) | (c >> (6 * followers))));
  for (int i = followers - 1; i >= 0; --i) {
    out.push_back(static_cast<char>(0x80 | ((c >> (6 * i)) & 0x3F)));
  }
}

// Removes one code point from the front of `bytes` and returns it. Of malformed bytes it removes
// the longest run that could begin a code point, and returns the replacement character.
char32_t TakeUtf8(std::string_view& bytes) {
  const auto byteAt = [&](std::size_t i) -> unsigned {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
  };
  const unsigned lead = byteAt(0);
  std::size_t taken = 1;
  char32_t c = kReplacement;
  if (lead < 0x80) {
    c = lead;
  } else if (lead >= 0xC2 && lead <= 0xF4) {
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    // The second byte's range excludes overlong forms, surrogates and everything past the last
    // plane.
    const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    char32_t value = lead & (0x7FU >> length);
    while (taken < length && byteAt(taken) >= (taken == 1 ? low : 0x80) &&
           byteAt(taken) <= (taken == 1 ? high : 0xBF)) {
      value = (value << 6) | (byteAt(taken) & 0x3F);
      ++taken;
    }
    c = taken == length ? value : kReplacement;
  }
  bytes.remove_prefix(taken);
  return c;
}

char32_t TakeUtf16(std::wstring_view& text) {
  const auto unitAt = [&](std::size_t i) { return static_cast<char32_t>(text[i]); };
  char32_t c = unitAt(0);
  std::size_t taken = 1;
  if (c >= 0xD800 && c <= 0xDBFF && text.size() > 1 && unitAt(1) >= 0xDC00 && unitAt(1) <= 0xDFFF) {
    c = 0x10000 + ((c - 0xD800) << 10) + (unitAt(1) - 0xDC00);
    taken = 2;
  } else if (IsSurrogate(c) || c > kLast) {
    c = kReplacement;
  }
  text.remove_prefix(taken);
  return c;
}

}  // namespace

std::wstring DecodeUtf8(std::string_view bytes) {
  std::wstring out;
  out.reserve(bytes.size());
  while (!bytes.empty()) {
    AppendUtf16(TakeUtf8(bytes), out);
  }
  return out;
}

std::string EncodeUtf8(std::wstring_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  while (!text.empty()) {
    AppendUtf8(TakeUtf16(text), utf8);
  }
  return utf8;
}
