// A fresh folder for the files of one test.
#pragma once

#include <filesystem>
#include <random>
#include <string>

// Made empty, removed with all it holds at the end of its life.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;
    do {
      path = std::filesystem::temp_directory_path() / ("parchlet-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path));
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
