#include "platform/image/ReplacingFile.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The file that is to be replaced, if there is one.
struct ReplacedFile {
  bool exists = false;
  struct stat info {};
};

namespace {

constexpr int kMaxNameAttempts = 100;
constexpr int kMaxLinks = 40;          // as many as the system itself follows
constexpr mode_t kNewFileMode = 0666;  // the process's umask takes its share, as for any new file
constexpr mode_t kModeBits = 0777;

std::string FolderOf(const std::string& path) {
  const std::size_t separator = path.rfind('/');
  return separator == std::string::npos ? "" : path.substr(0, separator + 1);
}

// Returns the path that `path` leads to if it is a symbolic link; a file need not exist there.
// Empty for links that lead in a circle.
std::string FollowLinks(std::string path) {
  for (int i = 0; i < kMaxLinks; ++i) {
    std::array<char, PATH_MAX> text{};
    const ssize_t size = readlink(path.c_str(), text.data(), text.size());
    if (size < 0) {
      return path;  // no link
    }
    const std::string next(text.data(), static_cast<std::size_t>(size));
    path = next.starts_with('/') ? next : FolderOf(path).append(next);
  }
  return {};
}

// Returns nothing if anything but a regular file stands at the path, or a file that this process
// may not write: rename itself checks only the folder's permissions.
std::optional<ReplacedFile> FindReplaced(const std::string& path) {
  ReplacedFile replaced;
  if (stat(path.c_str(), &replaced.info) != 0) {
    return errno == ENOENT ? std::optional(replaced) : std::nullopt;
  }
  if (!S_ISREG(replaced.info.st_mode)) {
    return std::nullopt;
  }
  const int descriptor = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) {
    return std::nullopt;
  }
  replaced.exists = true;
  close(descriptor);
  return replaced;
}

// Gives the new file the mode of the old one, and its owner and group as far as this process may.
// Returns false if the mode cannot be set.
bool TakeOver(const struct stat& old, int descriptor) {
  const bool isOwned = fchown(descriptor, old.st_uid, old.st_gid) == 0 ||
                       fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) == 0;
  static_cast<void>(isOwned);  // else it stays this process's
  struct stat made {};
  return fstat(descriptor, &made) == 0 && (((made.st_mode ^ old.st_mode) & kModeBits) == 0 ||
                                           fchmod(descriptor, old.st_mode & kModeBits) == 0);
}

// A name not derived from the target's own, which may already be as long as names can be.
std::string TemporaryName(const std::string& target) {
  static std::atomic<std::uint64_t> counter = 0;
  return FolderOf(target) + ".parchlet-" + std::to_string(getpid()) + "-" +
         std::to_string(++counter) + ".tmp";
}

}  // namespace

ReplacingFile::ReplacingFile(const std::string& path) : target(FollowLinks(path)) {
  if (target.empty() || path.find('\0') != std::string::npos) {
    return;
  }
  const std::optional<ReplacedFile> replaced = FindReplaced(target);
  if (!replaced) {
    return;
  }
  const int descriptor = OpenTemporary(*replaced);
  if (descriptor < 0) {
    return;
  }
  if (!replaced->exists || TakeOver(replaced->info, descriptor)) {
    file = fdopen(descriptor, "wb");
  }
  if (file == nullptr) {
    close(descriptor);
    Remove(temporary);
  }
}

int ReplacingFile::OpenTemporary(const ReplacedFile& replaced) {
  // From the start, nobody may read it who may not read the file that it replaces.
  const mode_t mode = replaced.exists ? replaced.info.st_mode & 0700 : kNewFileMode;
  // An earlier process with this number may have died and left a file of that name behind.
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    temporary = TemporaryName(target);
    const int descriptor = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor >= 0 || errno != EEXIST) {
      return descriptor;
    }
  }
  return -1;
}

bool ReplacingFile::Rename(const std::string& from, const std::string& to) {
  return std::rename(from.c_str(), to.c_str()) == 0;
}

void ReplacingFile::Remove(const std::string& path) {
  unlink(path.c_str());
}
