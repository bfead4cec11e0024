#include "platform/files/Files.h"

#include <sys/stat.h>

#include "platform/text/Paths.h"

BOOL PathFileExistsW(const wchar_t* path) {
  struct stat info {};
  return path != nullptr && stat(NativePath(path).c_str(), &info) == 0 ? 1 : 0;
}
