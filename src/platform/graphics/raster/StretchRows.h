// The two steps of a bilinear stretch: a source row widened, and two such rows mixed and blended.
#pragma once

#include <cstddef>
#include <cstdint>

namespace raster {

// Columns come in eights; lists of them are filled up.
inline constexpr std::size_t kStretchStep = 8;

// Gives every column of `wide` the mix of row[first[i]] and row[first[i] + 1], channel by channel;
// `weights` holds, four times in 16 bits each, the second one's share in 1/32768, a multiple of
// 128. `count` is a multiple of kStretchStep.
void WidenRow(const std::uint32_t* row, const std::int32_t* first, const std::uint64_t* weights,
              std::size_t count, std::uint32_t* wide);

// Blends the mix of two rows of premultiplied pixels over `count` pixels; `weight`: the lower row's
// share in 1/256, below 256. The rows have room for a multiple of kStretchStep pixels.
void BlendMixedRows(const std::uint32_t* upper, const std::uint32_t* lower, int weight,
                    std::uint32_t* pixels, std::size_t count);

}  // namespace raster
