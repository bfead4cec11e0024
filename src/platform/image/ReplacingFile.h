// A file that appears under its name whole or not at all.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

// Writes a temporary file in the folder of the target and renames it in the end. Whatever fails,
// the temporary file is removed and a file that stood at the target stays as it was. One thread at
// a time.
class ReplacingFile {
 public:
  // Opens the temporary file. `target` is UTF-8; writing fails when it names anything but a regular
  // file or nothing, so that no device or folder is ever replaced.
  explicit ReplacingFile(const std::string& target);
  // Removes the temporary file unless Commit succeeded.
  ~ReplacingFile();
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  bool IsOpen() const { return file != nullptr; }
  // Appends; false when not everything could be written, and Commit then fails as well.
  bool Write(const void* bytes, std::size_t size);
  // Closes the file and puts it at the target; false when any byte may be missing. Called once.
  bool Commit();

 private:
  void Discard();

  std::string target;
  std::string temporary;
  std::FILE* file = nullptr;
  bool failed = false;
};
