#include "x11/XServer.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace {

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

bool HasCompositor(const std::string& display) {
  xcb_connection_t* connection = xcb_connect(display.c_str(), nullptr);
  const std::string name = "_NET_WM_CM_S0";
  xcb_intern_atom_reply_t* atom = xcb_intern_atom_reply(
      connection,
      xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
      nullptr);
  xcb_get_selection_owner_reply_t* owner =
      atom == nullptr ? nullptr
                      : xcb_get_selection_owner_reply(
                            connection, xcb_get_selection_owner(connection, atom->atom), nullptr);
  const bool has = owner != nullptr && owner->owner != XCB_NONE;
  std::free(owner);
  std::free(atom);
  xcb_disconnect(connection);
  return has;
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
  compositor = std::make_unique<Process>(std::vector<std::string>{
      "env", "DISPLAY=" + display, "picom", "--backend", "xrender", "--config", "/dev/null"});
  return compositor->IsStarted() && Eventually([this] { return HasCompositor(display); });
}

int XServer::Run(const std::vector<std::string>& command) const {
  std::vector<std::string> whole = {"env", "DISPLAY=" + display};
  whole.insert(whole.end(), command.begin(), command.end());
  return RunToEnd(whole);
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
