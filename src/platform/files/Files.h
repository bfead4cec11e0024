// The file system's share: what stands at a path, and opening what may be read.
#pragma once

#include <cstdio>
#include <memory>

#include <parchlet/Platform.h>

// Returns 1 when a file or a folder stands at the path, which may have either separator; else 0.
BOOL PathFileExistsW(const wchar_t* path);

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, CloseFile>;

// Opens a regular file, or what a symbolic link to one names, for reading; the path may have either
// separator. Returns null, at once, for anything else: a pipe without a writer is not waited for.
OwnedFile OpenRegularFile(const wchar_t* path);
