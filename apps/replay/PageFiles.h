// PageFiles.h - the picture files that a replay writes.
#pragma once

#include <string>
#include <vector>

#include <parchlet/MemoryWindow.h>

#include "replay/Options.h"

namespace replay {

// The files of one page.
struct PageFiles {
  std::string picture;   // the last frame
  std::string exported;  // what the engine writes; empty: none
};

// Returns the files of every page, one page per board. Throws apps::Failure when a file cannot be
// written: no such folder, no permission, not a regular file, or one of `inputs`, the files that
// are read. Leaves nothing behind.
std::vector<PageFiles> NamePageFiles(const Options& options,
                                     const std::vector<std::string>& inputs);

// Writes the frame in the format of the path's suffix. Throws apps::Failure, and keeps the old
// file, when that fails.
void WritePicture(MemoryFrame frame, const std::string& path);

}  // namespace replay
