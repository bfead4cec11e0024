// Feeds the text conversions and the cutting of nicknames.
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include <parchlet/Utils.h>

#include "page/NicknameTip.h"
#include "platform/text/Charset.h"

namespace {

constexpr const char* kCharsets[] = {"", "ISO-8859-1", "GB18030", "SHIFT_JIS", "UTF-7", "no such"};
constexpr int kTipWidth = 10;

void Require(bool isTrue) {
  if (!isTrue) {
    std::abort();
  }
}

bool IsUtf16(std::wstring_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto unit = static_cast<char32_t>(text[i]);
    const bool isLead = unit >= 0xD800 && unit <= 0xDBFF;
    if (isLead) {
      ++i;
    }
    if (unit > 0xFFFF || (unit >= 0xDC00 && unit <= 0xDFFF) ||
        (isLead && (i == text.size() || text[i] < 0xDC00 || text[i] > 0xDFFF))) {
      return false;
    }
  }
  return true;
}

void Convert(const std::string& bytes, const std::string& charset) {
  const std::wstring text = DecodeText(bytes, charset);
  Require(IsUtf16(text));
  EncodeText(text, charset);
  Require(DecodeText(EncodeText(text, {}), {}) == text);
}

// Units of any value, as a host may hand them over.
void ConvertUnits(const std::string& bytes) {
  std::wstring units(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(units.data(), bytes.data(), units.size() * sizeof(wchar_t));
  const std::string utf8 = EncodeText(units, {});
  Require(EncodeText(DecodeText(utf8, {}), {}) == utf8);
  Require(Utils::UnicodeToUtf8(units) == EncodeText(units.c_str(), {}));
}

void Cut(const std::string& name) {
  int narrow = -1;
  int wide = -1;
  const std::string cut = ShortenNickname(name, kTipWidth, narrow, wide);
  Require(narrow >= 0 && wide >= 0 && narrow + 2 * wide < kTipWidth);
  const std::size_t kept = static_cast<std::size_t>(narrow) + 3 * static_cast<std::size_t>(wide);
  Require(cut == name.substr(0, kept) + "..." || (cut == name && name.size() <= kept));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  for (const char* charset : kCharsets) {
    Convert(bytes, charset);
  }
  Require(Utils::Utf8ToUnicode(bytes) == DecodeText(bytes.c_str(), {}));
  Utils::Utf8ToAscii(bytes);
  ConvertUnits(bytes);
  Cut(bytes);
  return 0;
}
