// Utils.h - text conversions, identifiers, picture streams and line geometry.
#pragma once

#include <string>

#include <parchlet/Platform.h>

// Static members only; reentrant, any thread.
//
// Wide text is UTF-16, one unit a wchar_t, on every platform. Text is read up to its first zero.
// Invalid input is replaced (U+FFFD in wide text and UTF-8), never an error. "Ascii" stands for the
// system code page: off Windows that of the environment's locale, UTF-8 for the C and POSIX
// locales. The conversions throw std::bad_alloc when memory runs out.
class PARCHLET_API Utils {
 public:
  static std::wstring AsciiToUnicode(const std::string& text);
  static std::wstring Utf8ToUnicode(const std::string& text);
  static std::string UnicodeToAscii(const std::wstring& text);
  static std::string UnicodeToUtf8(const std::wstring& text);
  static std::string AsciiToUtf8(const std::string& text);
  static std::string Utf8ToAscii(const std::string& text);

  // A new random identifier of 36 characters, XXXXXXXX-XXXX-xxxx-XXXX-XXXXXXXXXXXX, hexadecimal,
  // the third group in lower case; empty when the system has no random numbers to give.
  static std::string GenerateGuid();

  // Copies `data` into `block`, which holds `blockSize` bytes, and makes a stream over the block.
  // Null when an argument is empty, when `data` does not fit (the block's bytes are then cleared),
  // or when no stream can be had. The caller owns one reference of the stream, and still owns the
  // block: it frees it with GlobalFree after the last use of the stream.
  static IStream* GetPictureStream(const std::string& data, HGLOBAL block, unsigned int blockSize);

  // Whether the closed segments a1-a2 and b1-b2 have a point in common, touching included, within
  // the rounding of single precision. False for a segment of no length and for parallel ones,
  // overlapping ones too. The crossing is that of the lines y = k * x + c (x = m * y + c when one
  // is vertical): x = (c1 - c2) / (k2 - k1), compared with the ranges of both segments.
  static bool IsLineIntersect(POINT a1, POINT a2, POINT b1, POINT b2);
  // Whether p lies on the segment a-b: within its box widened by half the width on every side, and
  // with (int)(|pa| + |pb|) <= (int)(|ab| + 0.5), so within a slim ellipse around it.
  static bool IsPointOnLine(POINT p, POINT a, POINT b, int width);
  // The line y = slope * x + intercept through two points; for a vertical pair, slope 0 and p1's y.
  static void CalcLineEquation(POINT p1, POINT p2, float& slope, float& intercept);
};
