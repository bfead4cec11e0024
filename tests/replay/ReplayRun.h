// ReplayRun.h - runs the built parchlet-replay in a folder of its own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/PictureFile.h"
#include "support/TemporaryFolder.h"

inline constexpr std::uint32_t kWhite = 0xFFFFFFFF;
inline constexpr std::uint32_t kRed = 0xFFFF0000;
inline constexpr std::uint32_t kGreen = 0xFF00FF00;
inline constexpr std::uint32_t kBlue = 0xFF0000FF;

inline std::uint32_t PixelAt(const Picture& picture, int x, int y) {
  return picture.pixels.at(static_cast<std::size_t>(y) * picture.width + x);
}

struct RunResult {
  int status;
  std::string output;    // standard output
  std::string messages;  // standard error
};

// A folder that is there for one test, with the files the test puts into it. The tool runs inside
// it, so plain file names name files of it.
class ReplayFolder {
 public:
  void Write(const std::string& name, const std::string& content) const;
  std::string Read(const std::string& name) const;
  void MakeFolder(const std::string& name) const;
  void WritePicture(const std::string& name, int width, int height, std::uint32_t color) const {
    ::WritePicture(folder.File(name), width, height, color);
  }
  Picture ReadPicture(const std::string& name) const { return ::ReadPicture(folder.File(name)); }

  // The names of what is in the folder, or in a folder of it, sorted.
  std::vector<std::string> List(const std::string& name = {}) const;

  // Runs the tool with these arguments, which hold no quotes, after a command of the shell's.
  RunResult Run(const std::string& arguments, const std::string& preparation = "true") const;

 private:
  TemporaryFolder folder;   // the test's files
  TemporaryFolder streams;  // what the tool printed
};
