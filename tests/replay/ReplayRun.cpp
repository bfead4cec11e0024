#include "ReplayRun.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

std::string ReadAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

void ReplayFolder::Write(const std::string& name, const std::string& content) const {
  std::ofstream(folder.File(name), std::ios::binary) << content;
}

std::string ReplayFolder::Read(const std::string& name) const {
  return ReadAll(folder.File(name));
}

void ReplayFolder::MakeFolder(const std::string& name) const {
  fs::create_directory(folder.File(name));
}

std::vector<std::string> ReplayFolder::List(const std::string& name) const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder.File(name))) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

RunResult ReplayFolder::Run(const std::string& arguments, const std::string& preparation) const {
  const std::string output = streams.File("out");
  const std::string messages = streams.File("err");
  const std::string command = "cd '" + folder.Path().string() + "' && " + preparation +
                              " && '" REPLAY_BINARY "' " + arguments + " >'" + output + "' 2>'" +
                              messages + "'";
  const int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadAll(output), ReadAll(messages)};
}
