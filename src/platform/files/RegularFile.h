// Opening what may be read.
#pragma once

#include <cstdio>
#include <memory>

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, CloseFile>;

// Opens a regular file, or what a symbolic link to one names, for reading; the path may have either
// separator. Returns null, at once, for anything else: a pipe without a writer is not waited for.
OwnedFile OpenRegularFile(const wchar_t* path);
