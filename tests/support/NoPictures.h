#pragma once

#include <string>
#include <vector>

#include <sys/stat.h>

#include "support/TemporaryFolder.h"

// Paths of what is there and no picture file: nobody writes to the pipe.
inline std::vector<std::string> MakeNoPictures(const TemporaryFolder& folder) {
  mkfifo(folder.File("pipe.png").c_str(), 0600);
  return {folder.Path().string(), "/dev/zero", folder.File("pipe.png")};
}
