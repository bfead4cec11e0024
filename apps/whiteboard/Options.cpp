#include "whiteboard/Options.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <string_view>

#include "common/CommandLine.h"
#include "common/Input.h"
#include "whiteboard/Keys.h"
#include "whiteboard/Layout.h"

namespace whiteboard {

namespace {

constexpr int kMaxExtent = 16384;

void ParseSize(std::string_view text, Options& options) {
  const auto size = apps::ReadSize(text);
  if (!size || size->width < kSmallestWidth || size->height < kSmallestHeight ||
      size->width > kMaxExtent || size->height > kMaxExtent) {
    throw apps::Failure("--size must be WIDTHxHEIGHT in pixels, from " +
                        std::to_string(kSmallestWidth) + "x" + std::to_string(kSmallestHeight) +
                        " to " + std::to_string(kMaxExtent) + "x" + std::to_string(kMaxExtent));
  }
  options.width = size->width;
  options.height = size->height;
}

}  // namespace

std::optional<Options> ParseOptions(int argc, const char* const* argv) {
  Options options;
  std::string size = "1280x860";
  std::string peer = "Peer";
  bool hasPeer = false;
  CLI::App app("A whiteboard on the desktop, drawn by the Parchlet engine.", "parchlet-whiteboard");
  app.footer(HelpText());
  app.set_version_flag("--version", "parchlet-whiteboard " PARCHLET_VERSION,
                       "Print the version and exit");
  app.add_option("contents", options.contents,
                 "Pictures to draw on, one page each; a folder of pictures is a document");
  app.add_option("--name", options.name, "Your nickname")->type_name("NAME")->capture_default_str();
  CLI::Option* second =
      app.add_flag("--peer", hasPeer, "A second participant, with a window of its own");
  app.add_option("--peer-name", peer, "The second participant's nickname")
      ->type_name("NAME")
      ->needs(second)
      ->capture_default_str();
  CLI::Option* overlay = app.add_flag("--overlay", options.overlay, "Draw over the live desktop");
  app.add_option("--monitor", options.monitor, "The monitor to draw over (default: the main one)")
      ->type_name("NAME")
      ->needs(overlay);
  app.add_option("--size", size, "Size of the window in pixels")
      ->type_name("WxH")
      ->capture_default_str();
  app.add_option("--export-folder", options.exportFolder, "Where exported pictures go")
      ->type_name("FOLDER")
      ->capture_default_str();
  if (!apps::ParseCommandLine(app, argc, argv)) {
    return std::nullopt;
  }
  ParseSize(size, options);
  if (hasPeer) {
    options.peer = peer;
  }
  if (!std::filesystem::is_directory(options.exportFolder)) {
    throw apps::Failure("--export-folder: there is no folder " + options.exportFolder);
  }
  return options;
}

}  // namespace whiteboard
