#include "whiteboard/ContentWindow.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace whiteboard {

namespace {

// Two channels at a time, each in the low byte of its half.
std::uint32_t TimesPair(std::uint32_t pair, std::uint32_t factor) {
  const std::uint32_t product = pair * factor + 0x00800080U;
  return (product + (product >> 8 & 0x00FF00FFU)) >> 8 & 0x00FF00FFU;
}

std::uint32_t Over(std::uint32_t ink, std::uint32_t below) {
  const std::uint32_t rest = 255U - (ink >> 24);
  return ink + TimesPair(below & 0x00FF00FFU, rest) +
         (TimesPair(below >> 8 & 0x00FF00FFU, rest) << 8);
}

std::size_t At(const parchlet::Picture& raster, LONG x, LONG y) {
  return static_cast<std::size_t>(y) * static_cast<std::size_t>(raster.width) +
         static_cast<std::size_t>(x);
}

const std::uint32_t* RowOf(const LayeredFrame& frame, LONG x, LONG y) {
  const auto* bytes = reinterpret_cast<const std::byte*>(frame.pixels) + frame.stride * y;
  return reinterpret_cast<const std::uint32_t*>(bytes) + x;
}

std::size_t RowBytes(const RECT& area) {
  return static_cast<std::size_t>(area.right - area.left) * sizeof(std::uint32_t);
}

}  // namespace

ContentWindow::ContentWindow(LayeredWindow& target)
    : target(target), handle(RegisterLayeredWindow(*this)) {}

ContentWindow::~ContentWindow() {
  UnregisterLayeredWindow(handle);
}

void ContentWindow::SetContent(parchlet::Picture newContent) {
  const std::lock_guard lock(mutex);
  content = std::move(newContent);
  if (content.width == ink.width && content.height == ink.height && ink.width > 0) {
    const RECT whole = {0, 0, ink.width, ink.height};
    Blend(whole);
    Show({whole});
  }
}

bool ContentWindow::Present(const LayeredFrame& frame) {
  const std::lock_guard lock(mutex);
  std::vector<RECT> changed;
  if (frame.width != ink.width || frame.height != ink.height) {
    Resize(frame.width, frame.height);
    changed.push_back({0, 0, frame.width, frame.height});
  } else {
    for (std::size_t i = 0; i < frame.changedCount; ++i) {
      const RECT area = Narrow(frame, frame.changed[i]);
      if (area.top < area.bottom) {
        changed.push_back(area);
      }
    }
  }
  for (const RECT& area : changed) {
    Take(frame, area);
    Blend(area);
  }
  // Also without a change: the other window then repairs what was uncovered.
  return Show(changed);
}

void ContentWindow::Resize(int width, int height) {
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  for (parchlet::Picture* raster : {&ink, &shown}) {
    raster->width = width;
    raster->height = height;
    raster->pixels.assign(count, 0);
  }
}

bool ContentWindow::IsSameRow(const LayeredFrame& frame, const RECT& area, LONG y) const {
  return std::memcmp(RowOf(frame, area.left, y), &ink.pixels[At(ink, area.left, y)],
                     RowBytes(area)) == 0;
}

RECT ContentWindow::Narrow(const LayeredFrame& frame, RECT area) const {
  while (area.top < area.bottom && IsSameRow(frame, area, area.top)) {
    ++area.top;
  }
  while (area.top < area.bottom && IsSameRow(frame, area, area.bottom - 1)) {
    --area.bottom;
  }
  return area;
}

void ContentWindow::Take(const LayeredFrame& frame, const RECT& area) {
  for (LONG y = area.top; y < area.bottom; ++y) {
    std::memcpy(&ink.pixels[At(ink, area.left, y)], RowOf(frame, area.left, y), RowBytes(area));
  }
}

void ContentWindow::Blend(const RECT& area) {
  const bool hasContent = content.width == ink.width && content.height == ink.height;
  const auto width = static_cast<std::size_t>(area.right - area.left);
  for (LONG y = area.top; y < area.bottom; ++y) {
    const std::size_t row = At(ink, area.left, y);
    for (std::size_t at = row; at < row + width; ++at) {
      shown.pixels[at] = Over(ink.pixels[at], hasContent ? content.pixels[at] : kPaper);
    }
  }
}

bool ContentWindow::Show(const std::vector<RECT>& changed) {
  return target.Present({shown.pixels.data(), shown.width, shown.height,
                         static_cast<std::ptrdiff_t>(shown.width) * 4, changed.data(),
                         changed.size()});
}

}  // namespace whiteboard
