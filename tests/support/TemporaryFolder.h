// A fresh folder for the files of one test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

// Made empty, removed with all it holds at the end of its life.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "parchlet-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::runtime_error("no temporary folder can be made");
    }
    path = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return path; }
  std::string File(const std::string& name) const { return (path / name).string(); }
  std::size_t FileCount() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path), {}));
  }

 private:
  std::filesystem::path path;
};
