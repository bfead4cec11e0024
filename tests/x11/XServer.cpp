#include "x11/XServer.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "x11/XClient.h"

namespace {

// Windows without frames, the whiteboard's in the corner; a press hands over the focus, for which
// the window manager holds the pointer back for a moment.
constexpr const char* kWindowManagerSettings = R"(<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <theme><keepBorder>no</keepBorder></theme>
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
constexpr int kPatienceMs = 30'000;

// What the server says on that pipe: its display number. Empty when it says nothing.
std::string ReadNumber(int pipe) {
  std::string text;
  pollfd waiting = {pipe, POLLIN, 0};
  while (poll(&waiting, 1, kPatienceMs) > 0) {
    char letter = 0;
    if (read(pipe, &letter, 1) != 1 || letter == '\n') {
      break;
    }
    text += letter;
  }
  return text;
}

bool HasCompositor(const XClient& client) {
  return client.OwnerOf("_NET_WM_CM_S0") != XCB_NONE;
}

}  // namespace

XServer::XServer(const std::vector<std::string>& options) {
  if (!IsInstalled("Xvfb")) {
    missing = "There is no Xvfb on this machine: scripts/install-deps.sh test installs it";
    return;
  }
  int pipe[2];
  if (pipe2(pipe, O_CLOEXEC) != 0) {
    missing = "no pipe for the X server";
    return;
  }
  std::vector<std::string> command = {
      "Xvfb", "-displayfd", std::to_string(pipe[1]), "-noreset", "-nolisten", "tcp", "-nocursor"};
  command.insert(command.end(), options.begin(), options.end());
  server = std::make_unique<Process>(command, pipe[1]);
  close(pipe[1]);
  const std::string number = ReadNumber(pipe[0]);
  close(pipe[0]);
  if (number.empty()) {
    missing = "The X server did not start";
    return;
  }
  display = ":" + number;
}

XServer::~XServer() = default;

bool XServer::StartCompositor() {
  compositor = std::make_unique<Process>(
      OnDisplay({"picom", "--backend", "xrender", "--config", "/dev/null"}));
  const XClient client(display);
  return Eventually([&client] { return HasCompositor(client); });
}

bool XServer::StartWindowManager() {
  const std::string settings = folder.File("openbox.xml");
  std::ofstream(settings) << kWindowManagerSettings;
  // It announces itself before it is ready for windows; this it runs when it is.
  windowManager = std::make_unique<Process>(OnDisplay(
      {"openbox", "--sm-disable", "--config-file", settings, "--startup", "xsetroot -name ready"}));
  const XClient client(display);
  return Eventually([&client] { return client.HasRootProperty("WM_NAME"); });
}

std::vector<std::string> XServer::OnDisplay(const std::vector<std::string>& command) const {
  std::vector<std::string> whole = {"env", "DISPLAY=" + display};
  whole.insert(whole.end(), command.begin(), command.end());
  return whole;
}

int XServer::Run(const std::vector<std::string>& command) const {
  return RunToEnd(OnDisplay(command));
}

bool XServer::Click(int x, int y) {
  return Run({"xdotool", "mousemove", std::to_string(x), std::to_string(y), "click", "1"}) == 0;
}

bool XServer::ChangeMonitors(const std::vector<std::string>& words) {
  std::vector<std::string> command = {"xrandr"};
  command.insert(command.end(), words.begin(), words.end());
  return Run(command) == 0;
}

void XServer::Kill() {
  server->End(SIGKILL);
  // What it would have removed itself.
  const std::string number = display.substr(1);
  unlink(("/tmp/.X" + number + "-lock").c_str());
  unlink(("/tmp/.X11-unix/X" + number).c_str());
}

std::vector<std::string> ScreenOptions(const std::string& size, bool sharesMemory) {
  std::vector<std::string> options = {"-screen", "0", size + "x24"};
  if (!sharesMemory) {
    options.insert(options.end(), {"-extension", "MIT-SHM"});
  }
  return options;
}

bool Eventually(const std::function<bool()>& holds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kPatienceMs);
  while (!holds()) {
    if (std::chrono::steady_clock::now() > end) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}
