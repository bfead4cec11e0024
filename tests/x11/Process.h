// Process.h - programs that a test starts, and that never outlive it.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

// A program under way. It dies with this object, and with this process however that ends.
class Process {
 public:
  // `passedFile` stays open in the program, as the same number; -1 for none.
  explicit Process(const std::vector<std::string>& command, int passedFile = -1);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  bool IsStarted() const { return id > 0; }
  // Ends the program with that signal and waits until it is gone.
  void End(int signal);
  // Waits until the program is gone by itself; its exit code, or -1 when it was killed.
  int WaitForEnd();

 private:
  pid_t id = -1;
};

// Runs a program to its end; its exit code, or -1 when it could not be started or was killed.
int RunToEnd(const std::vector<std::string>& command);

bool IsInstalled(const std::string& program);
