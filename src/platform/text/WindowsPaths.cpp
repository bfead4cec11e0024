#include "platform/text/Paths.h"
#include "platform/text/Unicode.h"

std::string NativePath(const wchar_t* path) {
  return EncodeUtf8(path);  // the system takes either separator
}
