// Conversions between fractions of a page and pixels, defined for every input.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <parchlet/AnnotationTypes.h>

// Truncates toward zero; NaN gives 0, a value past the int32 range gives its end.
inline std::int32_t SaturatingPixel(double value) {
  if (std::isnan(value)) {
    return 0;
  }
  constexpr double kLow = std::numeric_limits<std::int32_t>::min();
  constexpr double kHigh = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(value, kLow, kHigh));
}

inline std::int32_t SaturatingPixel(std::int64_t value) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

// Pixel x = (int)(W * xRatio + 0.5), y likewise.
inline POINT PixelOf(const AnnotationPoint& point, CurrentAnnotPageSize size) {
  return {SaturatingPixel(size.width * point.xRatio + 0.5),
          SaturatingPixel(size.height * point.yRatio + 0.5)};
}

// The pixel of the last conversion.
inline POINT StoredPixel(const AnnotationPoint& point) {
  return {point.x, point.y};
}

// The page point of a host's pixel.
inline AnnotationPoint PagePoint(POINT pixel, CurrentAnnotPageSize size) {
  return {pixel.x, pixel.y, static_cast<double>(pixel.x) / static_cast<double>(size.width),
          static_cast<double>(pixel.y) / static_cast<double>(size.height)};
}

// Boxes of pixels, ends included.
inline constexpr RECT kNoBox = {std::numeric_limits<LONG>::max(), std::numeric_limits<LONG>::max(),
                                std::numeric_limits<LONG>::min(), std::numeric_limits<LONG>::min()};

inline bool IsEmptyBox(const RECT& box) {
  return box.left > box.right;
}

inline bool IsSameBox(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

inline RECT BoxOf(POINT a, POINT b) {
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

inline bool DoMeet(const RECT& a, const RECT& b) {
  return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

// The box with `margin` more on every side, as far as pixels go.
inline RECT Widened(const RECT& box, std::int64_t margin) {
  return {SaturatingPixel(box.left - margin), SaturatingPixel(box.top - margin),
          SaturatingPixel(box.right + margin), SaturatingPixel(box.bottom + margin)};
}

inline LONG Middle(LONG a, LONG b) {
  return static_cast<LONG>((std::int64_t{a} + b) / 2);
}

inline void Extend(RECT& box, POINT point) {
  box.left = std::min(box.left, point.x);
  box.top = std::min(box.top, point.y);
  box.right = std::max(box.right, point.x);
  box.bottom = std::max(box.bottom, point.y);
}
