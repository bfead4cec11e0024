// Questions about the file system.
#pragma once

#include <parchlet/Platform.h>

// 1 when a file or a folder stands at the path, which may have either separator; else 0.
BOOL PathFileExistsW(const wchar_t* path);
