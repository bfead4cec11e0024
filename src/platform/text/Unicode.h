// The conversions themselves: code points from bytes and back.
#pragma once

#include <string>
#include <string_view>

// Returns UTF-16 text, one unit a wchar_t. Every malformed sequence becomes one U+FFFD.
std::wstring DecodeUtf8(std::string_view bytes);

// Returns UTF-8 from UTF-16 text. A surrogate without its other half becomes U+FFFD. Where a
// wchar_t is wide enough, a unit may also hold a whole code point.
std::string EncodeUtf8(std::wstring_view text);
