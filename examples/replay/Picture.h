// Picture.h - the picture files that a replay writes.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <parchlet/MemoryWindow.h>

namespace replay {

// Throws Failure, which starts with `path`, unless files can be made in the folder. Writes nothing
// that stays.
void CheckFolder(const std::string& folder, const std::string& path);

// The file of page `page` (from 0) of `pageCount`: `out` for a single page, else with the page's
// number from 1 before the extension, "demo-2.png".
std::string PictureName(const std::string& out, std::size_t page, std::size_t pageCount);

// Throws Failure when a picture cannot go to `path`: no folder, no right to write there, something
// else than a file in its place, or one of the files that are read. Writes nothing.
void CheckPicture(const std::string& path, const std::vector<std::string>& inputs);

// Writes the frame as a PNG file. Throws Failure when it cannot; an older file of that name is then
// as it was.
void WritePicture(const MemoryFrame& frame, const std::string& path);

}  // namespace replay
