#include "platform/text/CodePage.h"

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text/Charset.h"

namespace {

// Returns the character set of the environment's locale; empty stands for UTF-8.
std::string SystemCharset() {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (locale == nullptr) {
    return {};
  }
  std::string charset = nl_langinfo_l(CODESET, locale);
  freelocale(locale);
  const bool isPlain = charset == "UTF-8" || charset == "ANSI_X3.4-1968" || charset == "US-ASCII";
  return isPlain ? std::string() : charset;
}

std::string CharsetOf(UINT codePage) {
  return codePage == CP_UTF8 ? std::string() : SystemCharset();
}

// Returns the size of the result, and copies it with its zero if there is a buffer.
template <class Unit>
int Deliver(const std::basic_string<Unit>& text, Unit* out, int capacity) {
  const std::size_t needed = text.size() + 1;
  if (needed > 0x7FFFFFFF) {
    return 0;
  }
  if (capacity == 0) {
    return static_cast<int>(needed);
  }
  if (out == nullptr || capacity < 0 || needed > static_cast<std::size_t>(capacity)) {
    return 0;
  }
  std::memcpy(out, text.c_str(), needed * sizeof(Unit));
  return static_cast<int>(needed);
}

bool IsKnownRequest(UINT codePage, DWORD flags, int length) {
  return (codePage == CP_UTF8 || codePage == CP_ACP) && flags == 0 && length == -1;
}

}  // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, wchar_t* out,
                        int capacity) {
  if (text == nullptr || !IsKnownRequest(codePage, flags, length)) {
    return 0;
  }
  return Deliver(DecodeText(text, CharsetOf(codePage)), out, capacity);
}

int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* text, int length, char* out,
                        int capacity, const char* /*defaultCharacter*/, BOOL* /*usedDefault*/) {
  if (text == nullptr || !IsKnownRequest(codePage, flags, length)) {
    return 0;
  }
  return Deliver(EncodeText(text, CharsetOf(codePage)), out, capacity);
}
