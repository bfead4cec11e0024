// Text as pictures, each drawn once and kept as long as every frame shows it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/image/Picture.h"
#include "platform/text/TextPainter.h"

// Owned by the painter of one surface; one thread at a time.
class TextPictures {
 public:
  struct Placed {
    std::shared_ptr<const Picture> picture;  // null when there is nothing to see
    int left = 0;                            // of its top left corner on the surface
    int top = 0;
  };

  // Returns the text as it lies on a surface of that size. Lays it out anew unless this frame or
  // the one before asked for the same. Valid until the next call.
  const Placed& Find(const TextStyle& style, std::wstring_view text, double x, double y,
                     const TextSurface& surface);
  // Ends the frame: drops the texts that it did not ask for.
  void EndFrame();

 private:
  struct Entry {
    TextStyle style;
    std::wstring text;
    double x;
    double y;
    Placed placed;
    bool isUsed = true;
  };

  std::vector<Entry> entries;  // one for each text that is shown
  std::size_t next = 0;        // the entry after the one found last
};
