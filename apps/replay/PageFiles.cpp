#include "replay/PageFiles.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include <parchlet/Pictures.h>

#include "common/Input.h"

namespace replay {

namespace {

namespace fs = std::filesystem;
using apps::Failure;

// Throws Failure, which starts with `path`, unless files can be made in the folder.
void CheckFolder(const std::string& folder, const std::string& path) {
  std::error_code error;
  if (!fs::is_directory(folder, error)) {
    throw Failure(path + ": there is no folder " + folder);
  }
  // Only an attempt tells: permissions do not hold for root, nor on a read-only disk.
  std::string probe = (fs::path(folder) / ".parchlet-replay-XXXXXX").string();
  const int file = ::mkstemp(probe.data());
  if (file < 0) {
    throw Failure(path + ": cannot be written: " + std::generic_category().message(errno));
  }
  ::close(file);
  ::unlink(probe.c_str());
}

// Returns `out` for a single page, else with the page's number, counted from 1, before the suffix.
std::string PictureName(const std::string& out, std::size_t page, std::size_t pageCount) {
  if (pageCount == 1) {
    return out;
  }
  const fs::path path(out);
  fs::path name = path.stem();
  name += "-";
  name += std::to_string(page + 1);
  name += path.extension();
  return (path.parent_path() / name).string();
}

// Throws Failure when a picture cannot go to `path`.
void CheckPicture(const std::string& path, const std::vector<std::string>& inputs) {
  if (!fs::path(path).has_filename()) {
    throw Failure("\"" + path + "\": not the name of a file");
  }
  const fs::path folder = fs::path(path).parent_path();
  CheckFolder(folder.empty() ? "." : folder.string(), path);
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) {
    return;
  }
  // The picture replaces what is there, which would destroy a device or a pipe.
  if (!fs::is_regular_file(status)) {
    throw Failure(path + ": is there already and not a file");
  }
  if (::access(path.c_str(), W_OK) != 0) {
    throw Failure(path + ": no right to write to it");
  }
  for (const std::string& input : inputs) {
    if (fs::equivalent(path, input, error)) {
      throw Failure(path + ": is one of the boards or their pictures");
    }
  }
}

}  // namespace

std::vector<PageFiles> NamePageFiles(const Options& options,
                                     const std::vector<std::string>& inputs) {
  const std::string& folder = options.exportFolder;
  if (!folder.empty()) {
    CheckFolder(folder, folder);
  }
  std::vector<PageFiles> files;
  for (std::size_t page = 0; page < options.boards.size(); ++page) {
    PageFiles& names = files.emplace_back();
    names.picture = PictureName(options.out, page, options.boards.size());
    CheckPicture(names.picture, inputs);
    if (!options.exportFormat.empty()) {
      names.exported = folder + "/page-" + std::to_string(page + 1) + "." + options.exportFormat;
      CheckPicture(names.exported, inputs);
    }
  }
  return files;
}

void WritePicture(MemoryFrame frame, const std::string& path) {
  if (!parchlet::SavePicture({frame.width, frame.height, std::move(frame.pixels)}, path)) {
    throw Failure(path + ": the picture cannot be written");
  }
}

}  // namespace replay
