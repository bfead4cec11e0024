#include "replay/Options.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "common/CommandLine.h"

namespace replay {

namespace {

using apps::Failure;

constexpr const char* kDescription =
    "Replays drawings through the Parchlet engine, one page per board file, as fast as possible\n"
    "or at a given pace, and writes the last frame of every page as a picture.";
constexpr const char* kNicknameHelp = "Show the names of authors beside fresh marks";
constexpr const char* kExportHelp =
    "Let the engine write its pages into this folder as well, named by the time";
constexpr const char* kFormatHelp =
    "The export's files are page-1.png, page-2.png, ..., or of that format";
constexpr const char* kLossyHelp =
    "Delay, duplicate and reorder what the participants send each other, by this number";
constexpr const char* kOutHelp =
    "The picture, .png, .jpg or .bmp; several boards write FILE with -1, -2, ... before its suffix";

apps::PageSize ParseSize(std::string_view text) {
  constexpr int kMaxExtent = 32767;
  constexpr std::int64_t kMaxPixels = 64'000'000;
  const std::optional<apps::PageSize> size = apps::ReadSize(text);
  if (size && size->width <= kMaxExtent && size->height <= kMaxExtent &&
      std::int64_t{size->width} * size->height <= kMaxPixels) {
    return *size;
  }
  throw Failure("--size must be WIDTHxHEIGHT in pixels, such as 1920x1080, with at most " +
                std::to_string(kMaxExtent) + " a side and 64 million in all");
}

std::uint64_t ParseSeed(std::string_view text) {
  const std::optional<std::uint64_t> seed = apps::ReadNumber(text);
  if (!seed) {
    throw Failure("--lossy must be a whole number of 0 or more, such as 1");
  }
  return *seed;
}

void CheckExport(const Options& options, bool hasFolder, bool hasFormat) {
  if (hasFormat && !hasFolder) {
    throw Failure("--format needs --export, the folder to write to");
  }
  if (hasFolder && options.exportFolder.empty()) {
    throw Failure("--export must be the name of a folder");
  }
  const std::string& format = options.exportFormat;
  if (hasFormat && format != "png" && format != "jpg" && format != "bmp") {
    throw Failure("--format must be png, jpg or bmp");
  }
}

}  // namespace

std::optional<Options> ParseOptions(int argc, const char* const* argv) {
  Options options;
  std::string size = "1920x1080";
  std::optional<std::string> lossy;
  CLI::App app(kDescription, "parchlet-replay");
  app.set_version_flag("--version", "parchlet-replay " PARCHLET_VERSION,
                       "Print the version and exit");
  app.add_option("boards", options.boards, "Board files (JSON Lines), one page each")->required();
  app.add_option("--size", size, "Page and picture size in pixels")
      ->type_name("WxH")
      ->capture_default_str();
  app.add_option("--out", options.out, kOutHelp)->type_name("FILE")->capture_default_str();
  CLI::Option* pace =
      app.add_option("--pace", options.pace, "Points per second (default: as fast as possible)");
  pace->type_name("NUMBER");
  app.add_option("--lossy", lossy, kLossyHelp)->type_name("SEED");
  app.add_flag("--nickname", options.showNames, kNicknameHelp);
  const CLI::Option* folder =
      app.add_option("--export", options.exportFolder, kExportHelp)->type_name("DIR");
  const CLI::Option* format =
      app.add_option("--format", options.exportFormat, kFormatHelp)->type_name("png|jpg|bmp");
  if (!apps::ParseCommandLine(app, argc, argv)) {
    return std::nullopt;
  }
  options.size = ParseSize(size);
  if (lossy) {
    options.lossySeed = ParseSeed(*lossy);
  }
  if (pace->count() > 0 && !(std::isfinite(options.pace) && options.pace > 0)) {
    throw Failure("--pace must be a number of points a second above 0");
  }
  CheckExport(options, folder->count() > 0, format->count() > 0);
  return options;
}

}  // namespace replay
