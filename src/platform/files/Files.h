// The file system's share: what stands at a path.
#pragma once

#include <parchlet/Platform.h>

// Returns 1 when a file or a folder stands at the path, which may have either separator; else 0.
BOOL PathFileExistsW(const wchar_t* path);
