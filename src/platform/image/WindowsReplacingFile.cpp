#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/image/ReplacingFile.h"

// What the new file takes over from the one that it replaces.
struct ReplacedFile {
  std::string path;  // where it stands, once links were followed
  DWORD attributes = FILE_ATTRIBUTE_NORMAL;
  std::vector<std::byte> access;  // its security descriptor; empty for the folder's usual one
};

namespace {

constexpr int kMaxNameAttempts = 100;
constexpr DWORD kKeptAttributes = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN |
                                  FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_SYSTEM;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
// Whoever stands behind a pipe of that name may not act as this process.
constexpr DWORD kTrustNobody = SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION;

struct CloseFileHandle {
  void operator()(void* handle) const { CloseHandle(handle); }
};
using FileHandle = std::unique_ptr<void, CloseFileHandle>;

FileHandle Own(HANDLE handle) {
  return FileHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

// Empty for what is not UTF-8.
std::wstring Wide(const std::string& text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int units = size == 0 ? 0
                              : MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(),
                                                    size, wide.data(), size);
  wide.resize(static_cast<std::size_t>(units));
  return wide;
}

std::string Utf8(std::wstring_view wide) {
  const int size = static_cast<int>(wide.size());
  std::string text(wide.size() * 3, '\0');
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(),
                                        static_cast<int>(text.size()), nullptr, nullptr);
  text.resize(static_cast<std::size_t>(bytes));
  return text;
}

std::string FolderOf(const std::string& path) {
  const std::size_t end = path.find_last_of("/\\:");
  return end == std::string::npos ? "" : path.substr(0, end + 1);
}

// Where an open file stands; links were followed when it was opened.
std::string PathOf(HANDLE file) {
  std::wstring path(GetFinalPathNameByHandleW(file, nullptr, 0, 0), L'\0');
  const DWORD size =
      GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()), 0);
  path.resize(size < path.size() ? size : 0);
  return Utf8(path);
}

std::vector<std::byte> AccessOf(HANDLE file) {
  DWORD size = 0;
  GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> access(size);
  if (size == 0 || GetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION, access.data(), size,
                                           &size) == FALSE) {
    return {};
  }
  return access;
}

// Returns nothing if anything but a regular file stands at the path, or a file that this process
// may not write: putting another in its place checks less.
std::optional<ReplacedFile> FindReplaced(const std::string& path) {
  const std::wstring wide = Wide(path);
  const FileHandle file =
      Own(CreateFileW(wide.c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                      OPEN_EXISTING, kTrustNobody, nullptr));
  if (file == nullptr) {
    // A link that leads to no file stands there nevertheless.
    const bool isFree = !wide.empty() && GetLastError() == ERROR_FILE_NOT_FOUND &&
                        GetFileAttributesW(wide.c_str()) == INVALID_FILE_ATTRIBUTES;
    return isFree ? std::optional(ReplacedFile{path, FILE_ATTRIBUTE_NORMAL, {}}) : std::nullopt;
  }
  BY_HANDLE_FILE_INFORMATION info{};
  if (GetFileType(file.get()) != FILE_TYPE_DISK ||
      GetFileInformationByHandle(file.get(), &info) == FALSE ||
      (info.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
    return std::nullopt;
  }
  const DWORD kept = info.dwFileAttributes & kKeptAttributes;
  return ReplacedFile{PathOf(file.get()), kept != 0 ? kept : FILE_ATTRIBUTE_NORMAL,
                      AccessOf(file.get())};
}

// A name not derived from the target's own, which may already be as long as names can be.
std::string TemporaryName(const std::string& target) {
  static std::atomic<std::uint64_t> counter = 0;
  return FolderOf(target) + ".parchlet-" + std::to_string(GetCurrentProcessId()) + "-" +
         std::to_string(++counter) + ".tmp";
}

}  // namespace

ReplacingFile::ReplacingFile(const std::string& path) {
  if (path.empty() || path.find('\0') != std::string::npos) {
    return;
  }
  const std::optional<ReplacedFile> replaced = FindReplaced(path);
  if (!replaced || replaced->path.empty()) {
    return;
  }
  target = replaced->path;
  const int descriptor = OpenTemporary(*replaced);
  if (descriptor < 0) {
    return;
  }
  file = _fdopen(descriptor, "wb");
  if (file == nullptr) {
    _close(descriptor);
    Remove(temporary);
  }
}

int ReplacingFile::OpenTemporary(const ReplacedFile& replaced) {
  // From the start, nobody may read it who may not read the file that it replaces.
  std::vector<std::byte> access = replaced.access;
  SECURITY_ATTRIBUTES security{sizeof security, access.empty() ? nullptr : access.data(), FALSE};
  // An earlier process with this number may have died and left a file of that name behind.
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    temporary = TemporaryName(target);
    FileHandle made = Own(CreateFileW(Wide(temporary).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                      &security, CREATE_NEW, replaced.attributes, nullptr));
    if (made != nullptr) {
      const int descriptor =
          _open_osfhandle(reinterpret_cast<std::intptr_t>(made.get()), _O_WRONLY | _O_BINARY);
      if (descriptor < 0) {
        made.reset();
        Remove(temporary);
        return -1;
      }
      static_cast<void>(made.release());  // the descriptor's from now on
      return descriptor;
    }
    if (GetLastError() != ERROR_FILE_EXISTS) {
      return -1;
    }
  }
  return -1;
}

bool ReplacingFile::Rename(const std::string& from, const std::string& to) {
  return MoveFileExW(Wide(from).c_str(), Wide(to).c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
}

void ReplacingFile::Remove(const std::string& path) {
  DeleteFileW(Wide(path).c_str());
}
