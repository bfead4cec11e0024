#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdint>

#include "platform/files/RegularFile.h"

OwnedFile OpenRegularFile(const wchar_t* path) {
  // Others may write, rename or remove the file meanwhile. Whoever stands behind a pipe of that
  // name may not act as this process.
  const HANDLE handle = CreateFileW(
      path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
      OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION,
      nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return nullptr;
  }
  // A whole disk is of that type as well, but has no such information.
  BY_HANDLE_FILE_INFORMATION info{};
  const bool isRegular =
      GetFileType(handle) == FILE_TYPE_DISK && GetFileInformationByHandle(handle, &info) != FALSE;
  const int descriptor =
      isRegular ? _open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_RDONLY | _O_BINARY)
                : -1;
  if (descriptor < 0) {
    CloseHandle(handle);
    return nullptr;
  }
  OwnedFile file(_fdopen(descriptor, "rb"));
  if (file == nullptr) {
    _close(descriptor);
  }
  return file;
}
