#include "platform/files/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/RegularFile.h"
#include "platform/text/Paths.h"

BOOL PathFileExistsW(const wchar_t* path) {
  struct stat info {};
  return path != nullptr && stat(NativePath(path).c_str(), &info) == 0 ? 1 : 0;
}

OwnedFile OpenRegularFile(const wchar_t* path) {
  // Asked once it is open: what stands at a path may change between two looks.
  const int descriptor =
      open(NativePath(path).c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) {
    return nullptr;
  }
  struct stat info {};
  OwnedFile file;
  if (fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode)) {
    file.reset(fdopen(descriptor, "rb"));
  }
  if (file == nullptr) {
    close(descriptor);
  }
  return file;
}
