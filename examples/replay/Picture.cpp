#include "Picture.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "Failure.h"
#include "platform/image/Picture.h"

namespace replay {

namespace fs = std::filesystem;

void CheckFolder(const std::string& folder, const std::string& path) {
  std::error_code error;
  if (!fs::is_directory(folder, error)) {
    throw Failure(path + ": there is no folder " + folder);
  }
  // Only a try tells: rights say nothing to root, nor about a read-only disk.
  std::string probe = (fs::path(folder) / ".parchlet-replay-XXXXXX").string();
  const int file = ::mkstemp(probe.data());
  if (file < 0) {
    throw Failure(path + ": cannot be written: " + std::generic_category().message(errno));
  }
  ::close(file);
  ::unlink(probe.c_str());
}

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
  // The picture takes the place of what is there, which would be the end of a device or a pipe.
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

void WritePicture(const MemoryFrame& frame, const std::string& path) {
  const PictureView view = {frame.pixels.data(), frame.width, frame.height,
                            std::ptrdiff_t{4} * frame.width};
  if (!SavePicture(view, PictureEncoder::kPng, path)) {
    throw Failure(path + ": the picture cannot be written");
  }
}

}  // namespace replay
