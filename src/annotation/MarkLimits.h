// How much of a participant's mark a page keeps, so that no peer makes a frame, a search or the
// memory of a page cost without bounds. docs/limits.md says what honest use needs of it.
#pragma once

#include <cstddef>

inline constexpr std::size_t kMaxMarkPoints = 1'048'576;
inline constexpr std::size_t kMaxSubModels = 65'536;
inline constexpr std::size_t kMaxNicknameBytes = 1024;
