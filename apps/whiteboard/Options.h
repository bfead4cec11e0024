// Options.h - what the command line asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace whiteboard {

struct Options {
  std::vector<std::string> contents;  // picture files, and folders of them
  std::string name = "Me";
  std::optional<std::string> peer;  // the second participant's nickname
  bool overlay = false;
  std::string monitor;  // of the overlay; the main one when empty
  int width = 1280;     // of a window
  int height = 860;
  std::string exportFolder = ".";
};

// Reads the command line. Returns nothing after printing the help or the version to standard
// output. Throws apps::Failure for a mistake.
std::optional<Options> ParseOptions(int argc, const char* const* argv);

}  // namespace whiteboard
