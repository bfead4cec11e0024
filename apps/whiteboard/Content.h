// Content.h - the pictures that pages show below their marks.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <parchlet/Pictures.h>

namespace whiteboard {

// The paper of a page, 0xAARRGGBB.
inline constexpr std::uint32_t kPaper = 0xFFFFFFFF;

// Reads a picture file. Throws apps::Failure when the file is no picture.
std::shared_ptr<const parchlet::Picture> LoadContent(const std::string& path);

// Stretches the picture to that size over white paper, which makes it opaque. Returns blank paper
// for null.
parchlet::Picture Render(const parchlet::Picture* content, int width, int height);

// Cleans a path that a person typed, pasted or dropped: removes blanks and quotes around it and
// resolves "file://" and "~".
std::string CleanPath(const std::string& text);

}  // namespace whiteboard
