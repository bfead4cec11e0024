#include "ReplayRun.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

fs::path MakeTemporaryFolder() {
  std::string name = (fs::temp_directory_path() / "replay-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no temporary folder");
  }
  return name;
}

std::string ReadAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

ReplayFolder::ReplayFolder() : folder(MakeTemporaryFolder()), streams(MakeTemporaryFolder()) {}

ReplayFolder::~ReplayFolder() {
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  fs::remove_all(streams, ignored);
}

void ReplayFolder::Write(const std::string& name, const std::string& content) const {
  std::ofstream(folder / name, std::ios::binary) << content;
}

std::string ReplayFolder::Read(const std::string& name) const {
  return ReadAll(folder / name);
}

void ReplayFolder::MakeFolder(const std::string& name) const {
  fs::create_directory(folder / name);
}

void ReplayFolder::WritePicture(const std::string& name, int width, int height,
                                std::uint32_t color) const {
  const std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * height, color);
  if (!SavePicture({pixels.data(), width, height, std::ptrdiff_t{4} * width}, PictureEncoder::kPng,
                   (folder / name).string())) {
    throw std::runtime_error("no picture " + name);
  }
}

Picture ReplayFolder::ReadPicture(const std::string& name) const {
  const std::string bytes = Read(name);
  return DecodePicture(std::as_bytes(std::span(bytes)));
}

std::vector<std::string> ReplayFolder::List(const std::string& name) const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder / name)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

RunResult ReplayFolder::Run(const std::string& arguments) const {
  return RunAfter("", arguments);
}

RunResult ReplayFolder::RunLimited(int kilobytes, const std::string& arguments) const {
  // The shell counts blocks of 512 bytes, and the tool has to live to see its writes refused.
  return RunAfter("ulimit -f " + std::to_string(2 * kilobytes) + " && trap '' XFSZ && ", arguments);
}

RunResult ReplayFolder::RunAfter(const std::string& preparation,
                                 const std::string& arguments) const {
  const std::string command =
      "cd '" + folder.string() + "' && " + preparation + "'" REPLAY_BINARY "' " + arguments +
      " >'" + (streams / "out").string() + "' 2>'" + (streams / "err").string() + "'";
  const int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadAll(streams / "out"),
          ReadAll(streams / "err")};
}
