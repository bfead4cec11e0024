// Text conversion between UTF-16 (one unit a wchar_t) and the code pages that the engine uses.
#pragma once

#include <parchlet/Platform.h>

inline constexpr UINT CP_ACP = 0;  // the code page of the environment's locale
inline constexpr UINT CP_UTF8 = 65001;

// Converts `text`, read up to and including its terminating zero (`length` is -1), and gives the
// number of units written, or needed when `capacity` is 0; 0 when the arguments are not of this
// kind or the result does not fit. Invalid bytes become U+FFFD.
int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, wchar_t* out,
                        int capacity);

// The other way. Surrogate pairs are joined, a whole code point in one unit is accepted, what is
// neither becomes U+FFFD, and what the code page lacks becomes '?'. The two last arguments are
// null.
int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* text, int length, char* out,
                        int capacity, const char* defaultCharacter, BOOL* usedDefault);
