// File names at the layer's edge.
#pragma once

#include <string>

// Returns the system's form of a wide path: UTF-8, with slashes for both separators of the home
// platform.
std::string NativePath(const wchar_t* path);
