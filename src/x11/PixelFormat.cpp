#include "x11/PixelFormat.h"

#include <bit>

namespace {

constexpr std::uint8_t kWordBits = 32;

bool IsPlain(const xcb_visualtype_t& visual) {
  return visual._class == XCB_VISUAL_CLASS_TRUE_COLOR && visual.red_mask == 0xFF0000 &&
         visual.green_mask == 0x00FF00 && visual.blue_mask == 0x0000FF;
}

// Returns the first visual of the screen that `accepts` accepts, with its depth.
template <class Accepts>
const xcb_visualtype_t* FindVisual(const xcb_screen_t& screen, const Accepts& accepts) {
  auto depths = xcb_screen_allowed_depths_iterator(&screen);
  for (; depths.rem > 0; xcb_depth_next(&depths)) {
    auto visuals = xcb_depth_visuals_iterator(depths.data);
    for (; visuals.rem > 0; xcb_visualtype_next(&visuals)) {
      if (accepts(depths.data->depth, *visuals.data)) {
        return visuals.data;
      }
    }
  }
  return nullptr;
}

}  // namespace

bool CheckImageFormat(const Connection& connection, std::uint8_t depth, std::string& error) {
  const xcb_setup_t* setup = xcb_get_setup(connection.Get());
  if (setup == nullptr) {
    return connection.CheckAlive(error);
  }
  constexpr auto kOwnOrder = std::endian::native == std::endian::little ? XCB_IMAGE_ORDER_LSB_FIRST
                                                                        : XCB_IMAGE_ORDER_MSB_FIRST;
  if (setup->image_byte_order != kOwnOrder) {
    error = "the X server's images have the other byte order";
    return false;
  }
  auto formats = xcb_setup_pixmap_formats_iterator(setup);
  for (; formats.rem > 0; xcb_format_next(&formats)) {
    if (formats.data->depth == depth && formats.data->bits_per_pixel == kWordBits) {
      return true;
    }
  }
  error = "the X server has no 32-bit words for images of depth " + std::to_string(depth);
  return false;
}

bool HasPlainColors(const xcb_screen_t& screen, xcb_visualid_t visual) {
  return FindVisual(screen, [visual](std::uint8_t, const xcb_visualtype_t& candidate) {
           return candidate.visual_id == visual && IsPlain(candidate);
         }) != nullptr;
}

std::optional<xcb_visualid_t> FindAlphaVisual(const xcb_screen_t& screen) {
  const xcb_visualtype_t* found =
      FindVisual(screen, [](std::uint8_t depth, const xcb_visualtype_t& candidate) {
        return depth == kWordBits && IsPlain(candidate);
      });
  return found != nullptr ? std::optional(found->visual_id) : std::nullopt;
}
