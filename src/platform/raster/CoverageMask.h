// The coverage of one shape, a byte a pixel.
//
// The mask is cut into columns of 8 pixels. A group is the 8 pixels of one row in one column; the
// groups of a column follow each other in memory, so that 8 x 8 pixels are 64 bytes in a row,
// whatever the width of the clip. The mask is zero between shapes. Beside it, one bit a group tells
// whether the shape touched it, so that only those groups are looked at again.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/raster/Geometry.h"

namespace raster {

inline constexpr int kGroupShift = 3;
inline constexpr int kGroup = 1 << kGroupShift;  // pixels a group: the width of a column
inline constexpr int kSlackRows = 8;  // rows above and below the clip that a block may reach into

constexpr int ColumnOf(int x) {
  return x >> kGroupShift;
}

// Owned by one Rasterizer; used by one thread at a time.
class CoverageMask {
 public:
  // Lays the mask out for `clip`. It must be zero.
  void SetClip(const PixelRect& clip);
  const PixelRect& Clip() const { return clip; }

  int FirstColumn() const { return firstColumn; }
  int ColumnCount() const { return columnCount; }

  // The bytes of a group; rows from clip.top - kSlackRows to clip.bottom + kSlackRows - 1.
  std::uint8_t* Group(int column, int row) {
    return bytes.data() + (column - firstColumn) * columnStride + Index(row) * kGroup;
  }
  std::ptrdiff_t ColumnStride() const { return columnStride; }

  // Notes that the box, in columns and rows, may no longer be zero; TouchRows tells which of its
  // groups. Rows may reach into the slack.
  void TouchBox(const PixelRect& columnsAndRows) {
    firstWord = std::min(firstWord, Index(columnsAndRows.top) >> 6);
    lastWord = std::max(lastWord, (Index(columnsAndRows.bottom) - 1) >> 6);
    firstTouched = std::min(firstTouched, columnsAndRows.left - firstColumn);
    lastTouched = std::max(lastTouched, columnsAndRows.right - 1 - firstColumn);
  }

  // The bits of a column, of which TouchRows sets some.
  std::uint64_t* Bits(int column) {
    return bits.data() + static_cast<std::ptrdiff_t>(column - firstColumn) * wordsPerColumn;
  }
  std::ptrdiff_t BitsStride() const { return wordsPerColumn; }
  int Index(int row) const { return row - clip.top + kSlackRows; }

  // Notes in a column's bits which groups are not zero: bit i of `rows` is row `index + i`.
  static void TouchRows(std::uint64_t* columnBits, int index, std::uint64_t rows) {
    std::uint64_t* const word = columnBits + (index >> 6);
    const int shift = index & 63;
    word[0] |= rows << shift;
    const std::uint64_t rest = rows >> 1 >> (63 - shift);
    if (rest != 0) {
      word[1] |= rest;
    }
  }

  // All touched groups are in the words FirstWord() .. LastWord() of the columns FirstTouched() ..
  // LastTouched(), which count from FirstColumn().
  int FirstWord() const { return firstWord; }
  int LastWord() const { return lastWord; }
  int FirstTouched() const { return firstTouched; }
  int LastTouched() const { return lastTouched; }
  // The row of the lowest bit of word 0.
  int FirstRow() const { return clip.top - kSlackRows; }

  // The clip's last row, counted from FirstRow(), if it shares its pair of bits with a row below
  // the clip, else -1.
  int UnpairedRow() const {
    const int last = Index(clip.bottom - 1);
    return last % 2 == 0 ? last : -1;
  }

  // A column's words and bytes.
  struct Words {
    std::uint64_t* bits;
    const std::uint64_t* slack;
    std::uint8_t* bytes;

    std::uint8_t* BytesOf(int word) const { return bytes + word * 64 * kGroup; }
    // Clears a word and returns what it was: a bit for every touched group within the clip's rows.
    // The caller zeroes those groups' bytes.
    std::uint64_t Take(int word) const {
      const std::uint64_t taken = bits[word];
      bits[word] = 0;
      const std::uint64_t outside = taken & slack[word];
      if (outside != 0) {
        ClearSlack(BytesOf(word), outside);
      }
      return taken & ~outside;
    }
  };
  Words WordsOf(int column) {
    return {bits.data() + static_cast<std::ptrdiff_t>(column) * wordsPerColumn, slack.data(),
            bytes.data() + column * columnStride};
  }

  // A mask of the bytes of a column's groups that lie within the clip.
  std::uint64_t BytesInClip(int column) const {
    const int left = (firstColumn + column) * kGroup;
    const int cutLeft = std::max(0, clip.left - left);
    const int cutRight = std::max(0, left + kGroup - clip.right);
    constexpr std::uint64_t kAll = ~std::uint64_t{0};
    return (kAll << (8 * cutLeft)) & (kAll >> (8 * cutRight));
  }

  // Makes room for the next shape, once every word was taken.
  void Restart();

 private:
  static void ClearSlack(std::uint8_t* top, std::uint64_t rows);
  void MaskSlack();

  PixelRect clip;
  int firstColumn = 0;
  int columnCount = 0;
  std::ptrdiff_t columnStride = 0;  // bytes
  int wordsPerColumn = 0;
  std::vector<std::uint8_t> bytes;
  std::vector<std::uint64_t> bits;
  std::vector<std::uint64_t> slack;  // of each word, the rows above or below the clip
  int firstWord = 0;
  int lastWord = -1;
  int firstTouched = 0;
  int lastTouched = -1;
};

}  // namespace raster
