#include "x11/FramePusher.h"

#include <algorithm>
#include <cstring>
#include <numeric>

#include "x11/Area.h"

namespace {

constexpr std::uint8_t kDepth = 32;
// At least the size of a PutImage request without its pixels, in bytes.
constexpr std::size_t kRequestHead = 64;

void CopyRows(const LayeredFrame& frame, const RECT& area, std::uint32_t* to) {
  for (LONG y = area.top; y < area.bottom; ++y, to += WidthOf(area)) {
    const std::uint32_t* row = frame.pixels + y * (frame.stride / 4) + area.left;
    std::memcpy(to, row, std::size_t{WidthOf(area)} * sizeof(*row));
  }
}

std::size_t PixelsOfAll(const std::vector<RECT>& areas) {
  return std::accumulate(areas.begin(), areas.end(), std::size_t{0},
                         [](std::size_t sum, const RECT& area) { return sum + PixelsOf(area); });
}

}  // namespace

FramePusher::FramePusher(const Connection& connection, xcb_window_t window)
    : connection(connection),
      window(window),
      context(xcb_generate_id(connection.Get())),
      canShare(SharedImage::CanShare(connection)) {
  // Without this the server sends an event for every copy.
  const std::uint32_t noExposures = 0;
  xcb_create_gc(connection.Get(), context, window, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
}

FramePusher::~FramePusher() {
  xcb_free_gc(connection.Get(), context);
}

bool FramePusher::Push(const LayeredFrame& frame, const std::vector<RECT>& areas,
                       std::string& error) {
  if (areas.empty()) {
    return true;
  }
  underWay.clear();
  if (PrepareSharedImage(PixelsOfAll(areas))) {
    PushShared(frame, areas);
  } else {
    for (const RECT& area : areas) {
      PushThroughConnection(frame, area);
    }
  }
  return WaitForAll(error);
}

bool FramePusher::PrepareSharedImage(std::size_t pixelCount) {
  if (canShare && (shared == nullptr || shared->PixelCount() < pixelCount)) {
    shared.reset();
    shared = SharedImage::Create(connection, pixelCount);
    canShare = shared != nullptr;
  }
  return canShare;
}

void FramePusher::PushShared(const LayeredFrame& frame, const std::vector<RECT>& areas) {
  std::size_t start = 0;
  for (const RECT& area : areas) {
    CopyRows(frame, area, shared->Pixels() + start);
    underWay.push_back(xcb_shm_put_image_checked(
        connection.Get(), window, context, WidthOf(area), HeightOf(area), 0, 0, WidthOf(area),
        HeightOf(area), static_cast<std::int16_t>(area.left), static_cast<std::int16_t>(area.top),
        kDepth, XCB_IMAGE_FORMAT_Z_PIXMAP, 0, shared->Segment(),
        static_cast<std::uint32_t>(start * sizeof(std::uint32_t))));
    start += PixelsOf(area);
  }
}

void FramePusher::PushThroughConnection(const LayeredFrame& frame, const RECT& area) {
  const std::size_t limit =
      std::size_t{xcb_get_maximum_request_length(connection.Get())} * 4;  // it counts words
  const std::size_t rowBytes = std::size_t{WidthOf(area)} * sizeof(std::uint32_t);
  const std::size_t pixelBytes = limit > kRequestHead ? limit - kRequestHead : 0;
  const auto rowsAtOnce =
      static_cast<LONG>(std::clamp<std::size_t>(pixelBytes / rowBytes, 1, HeightOf(area)));
  for (LONG top = area.top; top < area.bottom; top += rowsAtOnce) {
    const RECT band = {area.left, top, area.right, std::min(top + rowsAtOnce, area.bottom)};
    rows.resize(PixelsOf(band));
    CopyRows(frame, band, rows.data());
    underWay.push_back(xcb_put_image_checked(
        connection.Get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, context, WidthOf(band), HeightOf(band),
        static_cast<std::int16_t>(band.left), static_cast<std::int16_t>(band.top), 0, kDepth,
        static_cast<std::uint32_t>(rows.size() * sizeof(std::uint32_t)),
        reinterpret_cast<const std::uint8_t*>(rows.data())));
  }
}

bool FramePusher::WaitForAll(std::string& error) {
  bool isTaken = true;
  // The last one first: when it is done, all are.
  for (auto request = underWay.rbegin(); request != underWay.rend(); ++request) {
    isTaken = connection.Check(*request, "show a frame", error) && isTaken;
  }
  return isTaken;
}
