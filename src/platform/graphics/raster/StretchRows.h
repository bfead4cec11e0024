// The two steps of a bilinear stretch: a source row widened, and two such rows mixed and blended.
#pragma once

#include <cstddef>
#include <cstdint>

namespace raster {

// Columns come in sixteens, the widest vector's; lists of them are filled up.
inline constexpr std::size_t kStretchStep = 16;

// Gives every column of `wide` the mix of row[first[i]] and row[first[i] + 1], channel by channel;
// `shares` holds the second one's share in 1/256. `first` never falls. `count` is a multiple of
// kStretchStep; of `shares`, kStretchStep more are read, and of `row` as many behind the pixel of
// the last column.
void WidenRow(const std::uint32_t* row, const std::int32_t* first, const std::uint8_t* shares,
              std::size_t count, std::uint32_t* wide);

// Blends the mix of two rows of premultiplied pixels over `count` pixels; `weight`: the lower row's
// share in 1/256, below 256. The rows have room for a multiple of kStretchStep pixels.
void BlendMixedRows(const std::uint32_t* upper, const std::uint32_t* lower, int weight,
                    std::uint32_t* pixels, std::size_t count);

}  // namespace raster
