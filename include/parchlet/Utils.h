// Utils.h - text conversions, identifiers, picture streams and line geometry.
#pragma once

#include <string>

#include <parchlet/Platform.h>

// Static operations without state; any thread may call them. Those that return a string throw
// std::bad_alloc if memory runs out.
class PARCHLET_API Utils {
 public:
  // The conversions read text up to its first zero. Wide text is UTF-16, one unit in each wchar_t,
  // on every platform. Invalid input is replaced (by U+FFFD in wide text and UTF-8) and is never an
  // error. "Ascii" means the system code page: off Windows that of the environment's locale, which
  // is UTF-8 for the C and POSIX locales.
  static std::wstring AsciiToUnicode(const std::string& text);
  static std::wstring Utf8ToUnicode(const std::string& text);
  static std::string UnicodeToAscii(const std::wstring& text);
  static std::string UnicodeToUtf8(const std::wstring& text);
  static std::string AsciiToUtf8(const std::string& text);
  static std::string Utf8ToAscii(const std::string& text);

  // Returns a new random identifier of 36 characters, XXXXXXXX-XXXX-xxxx-XXXX-XXXXXXXXXXXX in
  // hexadecimal, the third group in lower case. Returns an empty string if the system's random
  // number generator fails.
  static std::string GenerateGuid();

  // Copies `data` into `block`, which holds `blockSize` bytes, and returns a stream over the block.
  // Returns null if an argument is null or empty, if `data` does not fit (the block is then filled
  // with zeros), or if the stream cannot be created. The caller owns one reference to the stream
  // and still owns the block: it frees it with GlobalFree after the last use of the stream.
  static IStream* GetPictureStream(const std::string& data, HGLOBAL block, unsigned int blockSize);

  // Returns a stream that owns a copy of `data`, positioned at the start, for
  // Annotation::SetPicture. Returns null if `data` is empty, exceeds 4 GiB, or memory runs out. The
  // caller owns one reference.
  static IStream* MakePictureStream(const std::string& data);

  // Returns whether the segments a1-a2 and b1-b2 have a point in common, end points included, in
  // single precision. Returns false for a segment of length 0 and for parallel segments, even if
  // they overlap. The lines are y = k * x + c (x = m * y + c if one is vertical); they cross at
  // x = (c1 - c2) / (k2 - k1), which must lie within both segments' ranges of x.
  static bool IsLineIntersect(POINT a1, POINT a2, POINT b1, POINT b2);
  // Returns whether p lies on the segment a-b, drawn `width` pixels wide: in the segment's box
  // grown by width / 2 on every side, and in the thin ellipse around a and b with
  // (int)(|pa| + |pb|) <= (int)(|ab| + 0.5).
  static bool IsPointOnLine(POINT p, POINT a, POINT b, int width);
  // Writes the line y = slope * x + intercept through p1 and p2. For a vertical line, slope is 0
  // and intercept is p1.y.
  static void CalcLineEquation(POINT p1, POINT p2, float& slope, float& intercept);
};
