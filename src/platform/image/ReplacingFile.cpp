#include "platform/image/ReplacingFile.h"

ReplacingFile::~ReplacingFile() {
  Discard();
}

bool ReplacingFile::Write(const void* bytes, std::size_t size) {
  if (file == nullptr || failed) {
    return false;
  }
  failed = std::fwrite(bytes, 1, size, file) != size;
  return !failed;
}

bool ReplacingFile::Commit() {
  if (file == nullptr || failed || std::fflush(file) != 0) {
    Discard();
    return false;
  }
  const bool closed = std::fclose(file) == 0;
  file = nullptr;
  if (closed && Rename(temporary, target)) {
    return true;
  }
  Remove(temporary);
  return false;
}

void ReplacingFile::Discard() {
  if (file != nullptr) {
    std::fclose(file);
    file = nullptr;
    Remove(temporary);
  }
}
