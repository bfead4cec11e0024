// XServer.h - a real X server without a screen, with a compositor and a pointer on wish.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "support/TemporaryFolder.h"
#include "x11/XClient.h"

// Waits for something that another process is about to do; false when it does not come.
inline bool Eventually(const std::function<bool()>& holds) {
  for (int i = 0; i < 6000; ++i) {
    if (holds()) {
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return false;
}

// A program under way, in words for a shell. It dies with this object, and with this process
// however that ends: a test that crashes must not leave servers behind.
class Process {
 public:
  explicit Process(const std::string& command)
      : output(popen(("echo $$; exec setpriv --pdeathsig KILL " + command + " 2>/dev/null").c_str(),
                     "re")) {
    id = std::atoi(ReadLine().c_str());
  }
  ~Process() { End(SIGTERM); }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // The next line that the program prints, without its end; empty when it ends before that.
  std::string ReadLine() {
    char line[80] = "";
    const std::string text = std::fgets(line, sizeof line, output) != nullptr ? line : "";
    return text.substr(0, text.find('\n'));
  }
  // Ends the program with that signal and waits until it is gone.
  void End(int signal) {
    if (output != nullptr) {
      kill(id, signal);
      WaitForEnd();
    }
  }
  // Whether the program is gone.
  bool HasEnded() const {
    siginfo_t info = {};
    return waitid(P_PID, static_cast<id_t>(id), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == id;
  }
  // Waits until the program is gone by itself; its exit code, or -1 when it was killed.
  int WaitForEnd() {
    const int status = pclose(output);
    output = nullptr;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  std::FILE* output;
  pid_t id = -1;
};

// An Xvfb under a free display number, which it finds itself. It dies with this object.
class XServer {
 public:
  // `options` go to the server after those that are always given.
  explicit XServer(const std::string& options)
      : server("Xvfb -displayfd 1 -noreset -nolisten tcp -nocursor " + options),
        display(":" + server.ReadLine()) {}

  bool IsMissing() const { return display == ":"; }
  const std::string& Display() const { return display; }

  // Starts a program on it.
  std::unique_ptr<Process> Start(const std::string& command) const {
    return std::make_unique<Process>("env DISPLAY=" + display + " " + command + " >/dev/null");
  }
  // Runs a program on it to its end; returns its exit code.
  int Run(const std::string& command) const { return Start(command)->WaitForEnd(); }

  // Runs a compositor on it; false when none came up.
  bool StartCompositor() {
    compositor = Start("picom --backend xrender --config /dev/null");
    return Eventually([client = std::make_shared<XClient>(display)] {
      return client->HasOwner("_NET_WM_CM_S0");
    });
  }
  // Runs a window manager on it; false when none came up. It leaves windows without frames, puts
  // the whiteboard's into the corner, and closes them by Alt+F4.
  bool StartWindowManager() {
    std::ofstream(folder.File("settings")) << R"(<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <theme><keepBorder>no</keepBorder></theme>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <applications>
    <application class="*"><decor>no</decor></application>
    <application class="Parchlet-whiteboard">
      <position force="yes"><x>0</x><y>0</y></position>
    </application>
  </applications>
  <mouse><context name="Client"><mousebind button="Left" action="Press">
    <action name="Focus"/><action name="Raise"/>
  </mousebind></context></mouse>
</openbox_config>
)";
    // It announces itself before it is ready for windows; this it runs when it is.
    windowManager = Start("openbox --sm-disable --config-file " + folder.File("settings") +
                          " --startup 'touch " + folder.File("ready") + "'");
    return Eventually([&] { return std::filesystem::exists(folder.File("ready")); });
  }
  // Moves the pointer to that place of the screen, and presses and releases its first button.
  bool Click(int x, int y) const {
    return Run("xdotool mousemove " + std::to_string(x) + " " + std::to_string(y) + " click 1") ==
           0;
  }
  // Ends it from one moment to the next.
  void Kill() {
    server.End(SIGKILL);
    // What it would have removed itself.
    unlink(("/tmp/.X" + display.substr(1) + "-lock").c_str());
    unlink(("/tmp/.X11-unix/X" + display.substr(1)).c_str());
  }

 private:
  TemporaryFolder folder;  // the window manager's
  Process server;
  std::string display;
  std::unique_ptr<Process> compositor;
  std::unique_ptr<Process> windowManager;
};
