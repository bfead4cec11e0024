// The conversions themselves: code points from bytes and back.
#pragma once

#include <string>
#include <string_view>

// UTF-16 text, one unit a wchar_t, from bytes in `charset` (a name that iconv knows; empty is
// UTF-8, and so is a name that iconv does not know). Every malformed sequence becomes one U+FFFD.
std::wstring DecodeText(std::string_view bytes, const std::string& charset);

// Bytes in `charset` from UTF-16 text. A surrogate without its other half becomes U+FFFD, and what
// the character set lacks becomes '?'.
std::string EncodeText(std::wstring_view text, const std::string& charset);
