// ReplayRun.h - runs the built parchlet-replay in a folder of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/image/Picture.h"

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
  ReplayFolder();
  ~ReplayFolder();
  ReplayFolder(const ReplayFolder&) = delete;
  ReplayFolder& operator=(const ReplayFolder&) = delete;

  void Write(const std::string& name, const std::string& content) const;
  std::string Read(const std::string& name) const;
  void MakeFolder(const std::string& name) const;
  // A PNG file of one colour, 0xAARRGGBB.
  void WritePicture(const std::string& name, int width, int height, std::uint32_t color) const;
  Picture ReadPicture(const std::string& name) const;

  // The names of what is in the folder, or in a folder of it, sorted.
  std::vector<std::string> List(const std::string& name = {}) const;

  // Runs the tool with these arguments, which hold no quotes.
  RunResult Run(const std::string& arguments) const;
  // The same with files limited to so many kilobytes.
  RunResult RunLimited(int kilobytes, const std::string& arguments) const;

 private:
  RunResult RunAfter(const std::string& preparation, const std::string& arguments) const;

  std::filesystem::path folder;   // the test's files
  std::filesystem::path streams;  // what the tool printed
};
