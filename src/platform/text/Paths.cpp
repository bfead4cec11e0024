#include "platform/text/Paths.h"

#include <algorithm>

#include "platform/text/Unicode.h"

std::string NativePath(const wchar_t* path) {
  std::string native = EncodeUtf8(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}
