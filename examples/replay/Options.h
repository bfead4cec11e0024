// Options.h - what the command line asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace replay {

struct PageSize {
  int width;
  int height;
};

// Reads WIDTHxHEIGHT, each 1 or more. Nothing for anything else.
std::optional<PageSize> ReadSize(std::string_view text);

struct Options {
  std::vector<std::string> boards;         // board files, one page each; at least one
  PageSize size = {1920, 1080};            // pixels of every page
  std::string out = "replay.png";          // where the pictures go; see PictureName
  double pace = 0;                         // points a second; 0: as fast as it goes
  std::optional<std::uint64_t> lossySeed;  // of the network between the participants; see Network
  bool showNames = false;                  // beside fresh marks
  std::string exportFolder;                // of the engine's own image files; empty: none
  std::string exportFormat;                // png, jpg or bmp: a file a page; empty: the document
};

// Reads the command line. Gives nothing when help or version was asked for and has been printed to
// standard output. Throws Failure for anything else that is not a full order.
std::optional<Options> ParseOptions(int argc, const char* const* argv);

}  // namespace replay
