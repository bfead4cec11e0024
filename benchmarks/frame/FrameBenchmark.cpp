// FrameBenchmark.cpp - what one frame of a page costs, rendered and pushed to a window in memory,
// beside the same marks drawn straight with Cairo: painted from scratch, with one point added to
// one path, and with nothing changed. ratios.py makes a table of the results. Bound to one
// processor (taskset -c 0), the painter uses one thread.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "CairoRival.h"
#include "workload/EnginePage.h"
#include "workload/Workload.h"

namespace {

using WorkloadMaker = std::function<Workload()>;

bool AreAlike(std::uint32_t a, std::uint32_t b) {
  constexpr int kTolerance =
      48;  // two rasterisers round the coverage of an edge each in its own way
  for (unsigned shift = 0; shift < 32; shift += 8) {
    const int difference =
        static_cast<int>(a >> shift & 0xFFU) - static_cast<int>(b >> shift & 0xFFU);
    if (std::abs(difference) > kTolerance) {
      return false;
    }
  }
  return true;
}

// A rendering that leaves something out would look fast.
bool ShowTheSame(EnginePage& page, CairoRival& rival) {
  constexpr double kToleratedShare = 0.005;
  rival.Draw();
  const std::vector<std::uint32_t> expected = rival.CopyPixels();
  const std::vector<std::uint32_t> actual = page.CopyPixels();
  if (actual.size() != expected.size()) {
    return false;
  }
  std::size_t differing = 0;
  for (std::size_t i = 0; i < actual.size(); ++i) {
    differing += AreAlike(actual[i], expected[i]) ? 0 : 1;
  }
  return static_cast<double>(differing) <= kToleratedShare * static_cast<double>(actual.size());
}

// CPU time of the whole process, whatever else the machine does and however many threads draw.
double CpuSeconds() {
  constexpr double kNanosecond = 1e-9;
  timespec time = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + kNanosecond * static_cast<double>(time.tv_nsec);
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// Seconds a frame, as the mean of a few when one is too short to time alone.
template <class Show>
double Time(int frames, const Show& show) {
  const double start = CpuSeconds();
  for (int i = 0; i < frames; ++i) {
    show();
  }
  return (CpuSeconds() - start) / frames;
}

// What the rounds of one run took, in seconds a frame.
struct Times {
  std::vector<double> cairo, scratch, live, idle;

  void AddRound(EnginePage& page, CairoRival& rival) {
    constexpr int kShortFrames = 10;
    // In a row, as when a page is resized: the first frame after a pause also waits for memory that
    // has left the caches, which says more of the machine than of the painter.
    constexpr int kScratchFrames = 5;
    page.ShowAnew();
    scratch.push_back(Time(kScratchFrames, [&] { page.ShowAnew(); }));
    cairo.push_back(Time(1, [&] { rival.Draw(); }));
    live.push_back(Time(kShortFrames, [&] { page.ShowLive(); }));
    idle.push_back(Time(kShortFrames, [&] { page.ShowIdle(); }));
  }

  // How many times as long Cairo took, round by round.
  double Gain(const std::vector<double>& engine) const {
    std::vector<double> gains;
    for (std::size_t i = 0; i < engine.size(); ++i) {
      gains.push_back(cairo[i] / engine[i]);
    }
    return Median(std::move(gains));
  }
};

// Frames of both sides take turns, so that a machine that gets slower or faster under way does so
// for both. A round is one iteration.
void DrawInTurns(benchmark::State& state, const WorkloadMaker& make) {
  const Workload workload = make();
  EnginePage page(workload);
  CairoRival rival(workload);
  if (!ShowTheSame(page, rival)) {
    state.SkipWithError("the engine's page and Cairo's image differ");
    return;
  }
  Times times;
  while (state.KeepRunning()) {
    times.AddRound(page, rival);
  }
  constexpr double kMilliseconds = 1000.0;
  state.counters["marks"] = static_cast<double>(workload.marks.size());
  state.counters["points"] = static_cast<double>(workload.PointCount());
  state.counters["cairo_ms"] = kMilliseconds * Median(times.cairo);
  const auto report = [&](const std::string& name, const std::vector<double>& seconds) {
    state.counters[name + "_ms"] = kMilliseconds * Median(seconds);
    state.counters[name + "_gain"] = times.Gain(seconds);
  };
  report("scratch", times.scratch);
  report("live", times.live);
  report("idle", times.idle);
}

void Register(const std::string& name, const WorkloadMaker& make) {
  constexpr double kMinSeconds = 3.0;
  benchmark::RegisterBenchmark(name.c_str(), DrawInTurns, make)
      ->Unit(benchmark::kMillisecond)
      ->MinTime(kMinSeconds);
}

void RegisterPaths(const std::string& name, int width, int height, const PathStyle& style) {
  Register(name, [=] { return MakePaths(name, width, height, style); });
}

// How the cost of a frame grows with each of what a page has, the others as in W1.
void RegisterGrowth() {
  constexpr PathStyle kBase = {1000, 200, 6, 0xFF};
  const auto grow = [](const std::string& what, std::size_t value, int width, int height,
                       const PathStyle& style) {
    RegisterPaths("Grow/" + what + ":" + std::to_string(value), width, height, style);
  };
  for (const std::size_t paths : {100, 300, 1000, 3000, 10'000}) {
    grow("marks", paths, 1920, 1080, {paths, kBase.pointCount, kBase.penWidth, kBase.alpha});
  }
  for (const std::size_t points : {25, 100, 400, 1600}) {
    grow("points", points, 1920, 1080, {kBase.pathCount, points, kBase.penWidth, kBase.alpha});
  }
  for (const int pen : {1, 2, 6, 15, 30}) {
    grow("pen", static_cast<std::size_t>(pen), 1920, 1080,
         {kBase.pathCount, kBase.pointCount, pen, kBase.alpha});
  }
  for (const int height : {540, 1080, 2160, 4320}) {
    grow("rows", static_cast<std::size_t>(height), height * 16 / 9, height, kBase);
  }
}

void RegisterAll() {
  RegisterPaths("W1", 1920, 1080, {1000, 200, 6, 0xFF});
  RegisterPaths("W2", 1920, 1080, {1000, 200, 2, 0xFF});
  RegisterPaths("W3", 3840, 2160, {5000, 200, 6, 0xFF});
  Register("W4", [] { return MakeShapes("W4", 1920, 1080, 1000, 6); });
  RegisterPaths("W5", 1920, 1080, {1, 100'000, 6, 0xFF});
  Register("W6", [] { return MakePictures("W6", 1920, 1080, 200); });
  RegisterPaths("W7", 1920, 1080, {300, 200, 20, 0x80});
  Register("T", [] { return MakeTorture("T", 1920, 1080, 400); });
}

}  // namespace

int main(int argc, char** argv) {
  RegisterAll();
  RegisterGrowth();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
