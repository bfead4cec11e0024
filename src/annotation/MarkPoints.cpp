#include "annotation/MarkPoints.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

namespace {

constexpr std::size_t kLatest = 1;

Gdiplus::Point Convert(AnnotationPoint& point, CurrentAnnotPageSize size) {
  const POINT pixel = PixelOf(point, size);
  point.x = pixel.x;
  point.y = pixel.y;
  return {pixel.x, pixel.y};
}

void Cut(MarkPoints::List& list, std::size_t size) {
  if (list.size() > size) {
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(size), list.end());
  }
}

}  // namespace

void MarkPoints::Span::Extend(const AnnotationPoint& point) {
  const auto extend = [](auto& least, auto& greatest, auto value) {
    least = std::min(least, value);
    greatest = std::max(greatest, value);
  };
  const auto number = [](double ratio) { return std::isnan(ratio) ? 0.0 : ratio; };
  extend(low.x, high.x, point.x);
  extend(low.y, high.y, point.y);
  extend(low.xRatio, high.xRatio, number(point.xRatio));
  extend(low.yRatio, high.yRatio, number(point.yRatio));
  ++count;
}

POINT MarkPoints::PixelAt(std::size_t position) const {
  return StoredPixel(lists.find(0)->second[position]);
}

RECT MarkPoints::FirstTwoBox() const {
  return BoxOf(PixelAt(0), PixelAt(1));
}

RECT MarkPoints::FirstTwoBoxOn(CurrentAnnotPageSize size) const {
  const List& first = lists.find(0)->second;
  return BoxOf(PixelOf(first[0], size), PixelOf(first[1], size));
}

// The farthest points have the farthest pixels, whatever the size: conversion keeps order.
RECT MarkPoints::BoxOn(CurrentAnnotPageSize size) const {
  return BoxOf(PixelOf(span.low, size), PixelOf(span.high, size));
}

MarkPoints::SubModels MarkPoints::Connected() const {
  SubModels connected;
  unsigned int number = 0;
  AnyConnected(lists, [&](const List& list) {
    if (!list.empty()) {
      connected.emplace_hint(connected.end(), number, list);
    }
    ++number;
    return false;
  });
  return connected;
}

void MarkPoints::Add(const AnnotationPoint& point, bool keepsTwo) {
  List& list = lists[0];
  if (keepsTwo && list.size() > kLatest) {
    list[kLatest] = point;
    Replaced();
  } else {
    list.push_back(point);
    firstCount = list.size();
    isChanged = true;
    span.Extend(point);
    segmentBoxes.clear();
  }
}

void MarkPoints::SetAll(SubModels& all) {
  lists.swap(all);
  Replaced();
}

// A further sub-model costs no look at the others.
void MarkPoints::Merge(SubModels& fresh) {
  bool isReplaced = false;
  for (const auto& [number, list] : fresh) {
    isReplaced = lists.erase(number) > 0 || isReplaced;
    firstCount = number == 0 ? list.size() : firstCount;
    std::for_each(list.begin(), list.end(), [this](const auto& point) { span.Extend(point); });
  }
  lists.merge(fresh);
  convertedSize = {0, 0};
  segmentBoxes.clear();
  isChanged = true;
  if (isReplaced) {
    Recompute();
  }
}

void MarkPoints::MoveFirstTo(unsigned int number) {
  auto first = lists.extract(0);
  if (first.empty()) {
    try {
      lists.try_emplace(number);
    } catch (const std::bad_alloc&) {
      return;  // no list and an empty one mean the same
    }
    return;
  }
  first.key() = number;
  lists.erase(number);
  lists.insert(std::move(first));
  Replaced();
}

bool MarkPoints::EnsureFirst() {
  try {
    lists.try_emplace(0);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

void MarkPoints::Shift(double dx, double dy) {
  AnyConnected(lists, [dx, dy](List& list) {
    for (AnnotationPoint& point : list) {
      point.xRatio += dx;
      point.yRatio += dy;
    }
    return false;
  });
  Replaced();
}

void MarkPoints::Limit(std::size_t mostSubModels, std::size_t mostPoints) {
  if (lists.size() > mostSubModels) {
    lists.erase(std::next(lists.begin(), static_cast<std::ptrdiff_t>(mostSubModels)), lists.end());
  }
  for (auto& [number, list] : lists) {
    Cut(list, mostPoints);
    mostPoints -= list.size();
  }
  Replaced();
}

void MarkPoints::Replaced() {
  convertedSize = {0, 0};
  Recompute();
}

void MarkPoints::Recompute() {
  isChanged = true;
  segmentBoxes.clear();
  span = {};
  for (const auto& [number, list] : lists) {
    for (const AnnotationPoint& point : list) {
      span.Extend(point);
    }
  }
  const auto first = lists.find(0);
  firstCount = first != lists.end() ? first->second.size() : 0;
}

RECT MarkPoints::ConvertFirstTwo(CurrentAnnotPageSize size) {
  List& list = lists.find(0)->second;
  const POINT before[] = {StoredPixel(list[0]), StoredPixel(list[1])};
  const Gdiplus::Point a = Convert(list[0], size);
  const Gdiplus::Point b = Convert(list[1], size);
  const bool isSame =
      a.X == before[0].x && a.Y == before[0].y && b.X == before[1].x && b.Y == before[1].y;
  if (!isSame) {
    // A path's record of converted pixels, should the mark become one, does not cover these two.
    Replaced();
  }
  return BoxOf({a.X, a.Y}, {b.X, b.Y});
}

void MarkPoints::ConvertTail(CurrentAnnotPageSize size) {
  List& list = lists.find(0)->second;
  const std::size_t known = pixels.size();
  bool hasMoved = false;
  pixels.resize(list.size());  // all that takes memory, before anything changes
  for (std::size_t i = known; i < list.size(); ++i) {
    const POINT before = StoredPixel(list[i]);
    pixels[i] = Convert(list[i], size);
    hasMoved = hasMoved || pixels[i].X != before.x || pixels[i].Y != before.y;
  }
  if (hasMoved) {
    Recompute();
  }
}

void MarkPoints::ConvertPath(CurrentAnnotPageSize size) {
  const bool isNoSize = size.width == 0 && size.height == 0;  // stands for nothing converted
  if (!isNoSize && convertedSize.width == size.width && convertedSize.height == size.height) {
    if (pixels.size() < firstCount) {
      ConvertTail(size);
    }
    return;
  }
  convertedSize = {0, 0};
  // Memory may run out before the pixels change and after their span follows, never in between.
  segmentBoxes.clear();
  AnyConnected(lists, [this](List& list) {
    if (list.size() == 1) {
      list.push_back(list.front());
      ++span.count;
    }
    return false;
  });
  AnyConnected(lists, [size](List& list) {
    for (AnnotationPoint& point : list) {
      Convert(point, size);
    }
    return false;
  });
  Recompute();
  const List& first = lists.find(0)->second;
  pixels.resize(first.size());
  std::transform(first.begin(), first.end(), pixels.begin(),
                 [](const AnnotationPoint& point) { return Gdiplus::Point(point.x, point.y); });
  convertedSize = size;
}

void MarkPoints::FillSegmentBoxes() const {
  std::vector<RECT> boxes;
  AnyConnected(lists, [&boxes](const List& list) {
    for (std::size_t start = 0; start + 1 < list.size(); start += kSegmentsABox) {
      const std::size_t last = std::min(start + kSegmentsABox, list.size() - 1);
      RECT box = kNoBox;
      for (std::size_t i = start; i <= last; ++i) {
        Extend(box, StoredPixel(list[i]));
      }
      boxes.push_back(box);
    }
    return false;
  });
  segmentBoxes = std::move(boxes);
}
