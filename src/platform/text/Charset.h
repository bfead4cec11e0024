// Conversions between UTF-16 and any character set that the system's converter knows.
#pragma once

#include <string>
#include <string_view>

// Returns UTF-16 text, one unit a wchar_t, from bytes in `charset`: a name that iconv knows. Empty
// and unknown names stand for UTF-8. Every malformed sequence becomes one U+FFFD.
std::wstring DecodeText(std::string_view bytes, const std::string& charset);

// Returns bytes in `charset` from UTF-16 text. A surrogate without its other half becomes U+FFFD,
// and a character that the set lacks becomes '?'.
std::string EncodeText(std::wstring_view text, const std::string& charset);
