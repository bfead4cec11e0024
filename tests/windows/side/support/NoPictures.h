#pragma once

#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

// Paths of what is there and no picture file.
inline std::vector<std::string> MakeNoPictures(const TemporaryFolder& folder) {
  return {folder.Path().string(), "NUL", "\\\\.\\pipe\\no-such-pipe"};
}
