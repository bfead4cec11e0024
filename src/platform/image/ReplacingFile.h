// A file that appears under its name whole or not at all.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

struct ReplacedFile;  // what stands at the target, as the system tells it

// Writes a temporary file in the folder of the target and renames it in the end. Whatever fails,
// the temporary file is removed and a file that stood at the target stays as it was. A file that
// replaces another has its mode, and its owner and group as far as the process may set them; on
// Windows its attributes and its list of who may do what. One thread at a time.
class ReplacingFile {
 public:
  // Opens the temporary file. `path` is UTF-8; the target is what it names, or where it leads if it
  // is a symbolic link, which stays. Writing fails if anything but a regular file stands there, so
  // that no device or folder is ever replaced, and if the process may not write that file.
  explicit ReplacingFile(const std::string& path);
  // Removes the temporary file unless Commit succeeded.
  ~ReplacingFile();
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  bool IsOpen() const { return file != nullptr; }
  // Appends. Returns false if not everything could be written; Commit then fails too.
  bool Write(const void* bytes, std::size_t size);
  // Closes the file and puts it at the target. Returns false if any byte may be missing. Called
  // once.
  bool Commit();

 private:
  // The system's part.
  static bool Rename(const std::string& from, const std::string& to);
  static void Remove(const std::string& path);
  // Returns the descriptor, or -1; sets `temporary`.
  int OpenTemporary(const ReplacedFile& replaced);
  void Discard();

  std::string target;
  std::string temporary;
  std::FILE* file = nullptr;
  bool failed = false;
};
