// Text conversion between UTF-16 (one unit a wchar_t) and the code pages that the engine uses.
#pragma once

#include <parchlet/Platform.h>

using LANGID = WORD;
inline constexpr LANGID LANG_NEUTRAL = 0;

inline constexpr UINT CP_ACP = 0;  // the code page of the environment's locale
inline constexpr UINT CP_UTF8 = 65001;

// Converts `text` up to and including its terminating zero (`length` is -1). Returns the number of
// units written, or needed if `capacity` is 0; 0 if the result does not fit or for any other kind
// of arguments. Invalid bytes become U+FFFD.
int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, wchar_t* out,
                        int capacity);

// Converts the other way. Surrogate pairs are joined; a unit may also hold a whole code point. Any
// other unit becomes U+FFFD, and a character that the code page lacks becomes '?'. The two last
// arguments are null.
int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* text, int length, char* out,
                        int capacity, const char* defaultCharacter, BOOL* usedDefault);
