// X11Benchmark.cpp - what it costs to push a frame to an X11 window, as a whole and by changed
// rectangles, and what an idle overlay over a full page costs.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <parchlet/Parchlet.h>
#include <parchlet/x11/X11Overlay.h>
#include <parchlet/x11/X11Window.h>

#include "workload/Workload.h"
#include "x11/XClient.h"
#include "x11/XServer.h"

namespace {

using Clock = std::chrono::steady_clock;

struct Size {
  const char* name;
  int width;
  int height;
};
constexpr Size kSizes[] = {{"1920 x 1080", 1920, 1080}, {"3840 x 2160", 3840, 2160}};

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

double MillisecondsOf(const std::function<void()>& work) {
  const auto start = Clock::now();
  work();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// What changes from one frame to the next while somebody draws: the newest piece of a stroke; a
// stroke and a name beside it; a band across the page.
std::vector<std::vector<RECT>> Changes(const Size& size) {
  const int x = size.width / 3;
  const int y = size.height / 3;
  return {{{0, 0, size.width, size.height}},
          {{x, y, x + 64, y + 64}},
          {{x, y, x + 200, y + 160}, {x + 400, y, x + 480, y + 30}},
          {{0, y, size.width, y + size.height / 8}}};
}
constexpr const char* kChangeNames[] = {"whole page", "64 x 64", "two rectangles",
                                        "an eighth of the page"};

// The ways of pushing in turn, round by round, so that what else the machine does meets all alike.
std::vector<double> MeasurePushes(X11Window& window, const Size& size) {
  constexpr int kRounds = 60;
  std::vector<std::uint32_t> pixels(
      static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height), 0xFF336699);
  const std::vector<std::vector<RECT>> changes = Changes(size);
  std::vector<std::vector<double>> times(changes.size());
  for (int round = 0; round < kRounds; ++round) {
    for (std::size_t i = 0; i < changes.size(); ++i) {
      const LayeredFrame frame = {pixels.data(),     size.width,
                                  size.height,       static_cast<std::ptrdiff_t>(size.width) * 4,
                                  changes[i].data(), changes[i].size()};
      // Once unmeasured: the server is still at the other way's frame.
      window.Present(frame);
      times[i].push_back(MillisecondsOf([&] { window.Present(frame); }));
    }
  }
  std::vector<double> medians;
  for (const std::vector<double>& each : times) {
    medians.push_back(Median(each));
  }
  return medians;
}

bool ReportPushes(bool sharesMemory) {
  XServer server(std::string("-screen 0 3840x2160x24") +
                 (sharesMemory ? "" : " -extension MIT-SHM"));
  if (server.IsMissing()) {
    std::fprintf(stderr, "no Xvfb starts\n");
    return false;
  }
  XClient host(server.Display());
  for (const Size& size : kSizes) {
    X11Window window(server.Display(), host.ShowAlphaWindow({0, 0, size.width, size.height}));
    const std::vector<double> medians = MeasurePushes(window, size);
    if (!window.GetError().empty()) {
      std::fprintf(stderr, "%s\n", window.GetError().c_str());
      return false;
    }
    std::printf("\n%s, %s\n", size.name, sharesMemory ? "shared memory" : "through the connection");
    for (std::size_t i = 0; i < medians.size(); ++i) {
      std::printf("  %-22s %8.3f ms   %7.1f times faster than the whole page\n", kChangeNames[i],
                  medians[i], medians[0] / medians[i]);
    }
  }
  return true;
}

// The processor time of all threads of this process, in seconds.
double ProcessorTime() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void Fill(Parchlet& engine, const Workload& marks) {
  for (const BenchMark& mark : marks.marks) {
    engine.SetPen(mark.color, static_cast<unsigned int>(mark.width));
    engine.StartDrawing("doc", "page", mark.points.front());
    for (const POINT& point : mark.points) {
      engine.MoveDrawing(point);
    }
    std::string docId;
    std::string pageId;
    const std::string id = engine.GetCurrentAnnotationInfo(docId, pageId);
    engine.EndDrawing();
    Annotation echo(*engine.GetLocalAnnotation("doc", "page", id));
    echo.subModelIndex = 0;
    engine.AddAnnotationFromRemote("doc", "page", &echo);
  }
}

bool ReportIdleOverlay() {
  constexpr auto kSettling = std::chrono::seconds(2);
  constexpr auto kIdle = std::chrono::seconds(10);
  XServer server("-screen 0 1920x1080x24");
  if (server.IsMissing() || !server.StartCompositor()) {
    std::fprintf(stderr, "no X server with a compositor\n");
    return false;
  }
  X11Overlay overlay(server.Display(), {0, 0, 1920, 1080});
  std::printf("\nIdle overlay of 1920 x 1080, share of one core\n");
  for (const std::size_t count : {std::size_t{0}, std::size_t{1000}}) {
    Parchlet engine;
    engine.SetUserInfo("ada", "", "");
    engine.Init();
    engine.NewDoc("ada", "doc");
    engine.NewPage("doc", "page", "ada", overlay.Handle(),
                   {0, 0, 1920, 1080, true, {0, 0, 1920, 1080}, 0});
    Fill(engine, MakePaths("paths", 1920, 1080, {count, 200, 6, 0xFF}));
    std::this_thread::sleep_for(kSettling);
    const double before = ProcessorTime();
    const auto start = Clock::now();
    std::this_thread::sleep_for(kIdle);
    const double elapsed = std::chrono::duration<double>(Clock::now() - start).count();
    std::printf("  a page of %4zu paths   %6.2f %%\n", count,
                (ProcessorTime() - before) / elapsed * 100);
  }
  return overlay.GetError().empty();
}

}  // namespace

int main() {
  const bool isMeasured = ReportPushes(true) && ReportPushes(false) && ReportIdleOverlay();
  return isMeasured ? 0 : 1;
}
