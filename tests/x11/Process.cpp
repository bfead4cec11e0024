#include "x11/Process.h"

#include <sys/wait.h>

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <sstream>

namespace {

// Silent, but for what the test wants to hear; -1 when it cannot be started.
pid_t Spawn(const std::vector<std::string>& command, int passedFile) {
  // A test that crashes must not leave servers behind.
  std::vector<std::string> whole = {"setpriv", "--pdeathsig", "KILL"};
  whole.insert(whole.end(), command.begin(), command.end());
  std::vector<char*> arguments;
  arguments.reserve(whole.size() + 1);
  for (std::string& argument : whole) {
    arguments.push_back(argument.data());
  }
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  if (passedFile >= 0) {
    // Onto itself: that takes its close-on-exec mark away.
    posix_spawn_file_actions_adddup2(&files, passedFile, passedFile);
  }
  pid_t id = -1;
  const int result =
      posix_spawnp(&id, arguments.front(), &files, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  return result == 0 ? id : -1;
}

}  // namespace

Process::Process(const std::vector<std::string>& command, int passedFile)
    : id(Spawn(command, passedFile)) {}

Process::~Process() {
  End(SIGTERM);
}

void Process::End(int signal) {
  if (id > 0) {
    kill(id, signal);
    waitpid(id, nullptr, 0);
    id = -1;
  }
}

int Process::WaitForEnd() {
  int status = 0;
  const bool hasExited = id > 0 && waitpid(id, &status, 0) == id && WIFEXITED(status);
  id = -1;
  return hasExited ? WEXITSTATUS(status) : -1;
}

int RunToEnd(const std::vector<std::string>& command) {
  return Process(command).WaitForEnd();
}

bool IsInstalled(const std::string& program) {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path != nullptr ? path : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access(folder.append("/").append(program).c_str(), X_OK) == 0) {
      return true;
    }
  }
  return false;
}
