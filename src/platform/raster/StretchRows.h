// The two steps of a bilinear stretch: along a source row, and between two such rows.
#pragma once

#include <cstddef>
#include <cstdint>

namespace raster {

// Columns come in sixteens, the widest vector's; lists of them are filled up.
inline constexpr std::size_t kStretchStep = 16;

// Sets every column of `stretched` to the mix of row[first[i]] and row[first[i] + 1], channel by
// channel; `weights` holds the second one's weight in 1/256. `first` never falls. `count` is a
// multiple of kStretchStep; of `weights`, kStretchStep more are read, and of `row` as many after
// the pixel of the last column.
void StretchRow(const std::uint32_t* row, const std::int32_t* first, const std::uint8_t* weights,
                std::size_t count, std::uint32_t* stretched);

// Blends the mix of two rows of premultiplied pixels over `count` pixels; `weight`: the lower row's
// weight in 1/256, below 256. The rows have room for a multiple of kStretchStep pixels.
void BlendMixedRows(const std::uint32_t* upper, const std::uint32_t* lower, int weight,
                    std::uint32_t* pixels, std::size_t count);

}  // namespace raster
