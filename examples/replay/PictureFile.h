// PictureFile.h - the picture files that boards name.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace replay {

// The bytes of a picture file, shared by all who keep or carry them.
using PictureBytes = std::shared_ptr<const std::string>;

// What a file may hold at most, so that a wrong one ends in a message and not in a full memory.
inline constexpr std::size_t kMaxPictureBytes = std::size_t{64} << 20;

// Reads a file whole. Throws Failure, naming the file, when it cannot be read or is larger than a
// picture may be.
std::string ReadFileBytes(const std::string& path);

// Reads a picture file whole. Throws Failure, naming the file, when it cannot be read or is no
// picture that the engine knows.
PictureBytes ReadPictureFile(const std::string& path);

}  // namespace replay
