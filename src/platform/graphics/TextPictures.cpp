#include "platform/graphics/TextPictures.h"

#include <algorithm>

namespace {

TextPictures::Placed Render(const TextStyle& style, std::wstring_view text, double x, double y,
                            const TextSurface& surface) {
  const RECT area = FindTextArea(style, text, x, y, surface);
  if (area.left >= area.right || area.top >= area.bottom) {
    return {};
  }
  const auto picture = std::make_shared<Picture>();
  picture->width = static_cast<int>(area.right - area.left);
  picture->height = static_cast<int>(area.bottom - area.top);
  picture->pixels.resize(static_cast<std::size_t>(picture->width) *
                         static_cast<std::size_t>(picture->height));
  PaintText({picture->pixels.data(), picture->width, picture->height}, style, text, x - area.left,
            y - area.top);
  return {picture, static_cast<int>(area.left), static_cast<int>(area.top)};
}

}  // namespace

// Frames ask in the same order, so the entry after the one found last is the likeliest.
const TextPictures::Placed& TextPictures::Find(const TextStyle& style, std::wstring_view text,
                                               double x, double y, const TextSurface& surface) {
  const auto isIt = [&](const Entry& entry) {
    return entry.x == x && entry.y == y && entry.text == text && entry.style == style;
  };
  const auto likeliest = entries.begin() + static_cast<std::ptrdiff_t>(next);
  auto found = std::find_if(likeliest, entries.end(), isIt);
  if (found == entries.end()) {
    found = std::find_if(entries.begin(), likeliest, isIt);
    if (found == likeliest) {
      entries.push_back({style, std::wstring(text), x, y, Render(style, text, x, y, surface)});
      found = entries.end() - 1;
    }
  }
  found->isUsed = true;
  next = static_cast<std::size_t>(found - entries.begin()) + 1;
  return found->placed;
}

void TextPictures::EndFrame() {
  std::erase_if(entries, [](const Entry& entry) { return !entry.isUsed; });
  for (Entry& entry : entries) {
    entry.isUsed = false;
  }
  next = 0;
}
