#include "platform/image/ReplacingFile.h"

#include <atomic>
#include <cerrno>
#include <cstdint>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kMaxNameAttempts = 100;
constexpr mode_t kFileMode = 0666;  // the process's umask takes its share, as for any new file

bool CanBeReplaced(const std::string& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) {
    return errno == ENOENT;
  }
  return S_ISREG(info.st_mode);
}

// A name not derived from the target's own, which may already be as long as names can be.
std::string TemporaryName(const std::string& target) {
  static std::atomic<std::uint64_t> counter = 0;
  const std::size_t separator = target.rfind('/');
  const std::string folder = separator == std::string::npos ? "" : target.substr(0, separator + 1);
  return folder + ".parchlet-" + std::to_string(getpid()) + "-" + std::to_string(++counter) +
         ".tmp";
}

}  // namespace

ReplacingFile::ReplacingFile(const std::string& target) : target(target) {
  if (target.empty() || target.find('\0') != std::string::npos || !CanBeReplaced(target)) {
    return;
  }
  // A process that died before may have had the same number and left a file of that name behind.
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    temporary = TemporaryName(target);
    const int descriptor =
        open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kFileMode);
    if (descriptor >= 0) {
      file = fdopen(descriptor, "wb");
      if (file == nullptr) {
        close(descriptor);
        unlink(temporary.c_str());
      }
      return;
    }
    if (errno != EEXIST) {
      return;
    }
  }
}

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
  if (closed && std::rename(temporary.c_str(), target.c_str()) == 0) {
    return true;
  }
  unlink(temporary.c_str());
  return false;
}

void ReplacingFile::Discard() {
  if (file != nullptr) {
    std::fclose(file);
    file = nullptr;
    unlink(temporary.c_str());
  }
}
