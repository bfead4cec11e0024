// Options.h - what the command line asks for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/Input.h"

namespace replay {

struct Options {
  std::vector<std::string> boards;         // board files, one page each; at least one
  apps::PageSize size = {1920, 1080};      // of every page
  std::string out = "replay.png";          // where the pictures go; see NamePageFiles
  double pace = 0;                         // points per second; 0: as fast as possible
  std::optional<std::uint64_t> lossySeed;  // of the network between the participants; see Network
  bool showNames = false;                  // beside fresh marks
  std::string exportFolder;                // of the engine's own image files; empty: none
  std::string exportFormat;  // png, jpg or bmp: one file per page; empty: the document
};

// Reads the command line. Returns nothing after it has printed the help or the version to standard
// output. Throws apps::Failure for a mistake.
std::optional<Options> ParseOptions(int argc, const char* const* argv);

}  // namespace replay
