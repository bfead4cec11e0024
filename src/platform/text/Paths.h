// File names at the layer's edge.
#pragma once

#include <string>

// The system's own form of a wide path: UTF-8, with both separators of the home platform as
// slashes.
std::string NativePath(const wchar_t* path);
