// FrameBenchmark.cpp - what one rendering of a page costs, beside the same marks drawn straight
// with Cairo. ratios.py makes a table of the results.
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

// Frames of both sides take turns, so that a machine that gets slower or faster under way does so
// for both.
void DrawInTurns(benchmark::State& state, const WorkloadMaker& make) {
  const Workload workload = make();
  EnginePage page(workload);
  CairoRival rival(workload);
  if (!ShowTheSame(page, rival)) {
    state.SkipWithError("the engine's page and Cairo's image differ");
    return;
  }
  std::vector<double> rivalSeconds;
  std::vector<double> ratios;
  while (state.KeepRunning()) {
    const double start = CpuSeconds();
    benchmark::DoNotOptimize(page.Draw());
    const double turn = CpuSeconds();
    rival.Draw();
    const double end = CpuSeconds();
    state.SetIterationTime(turn - start);
    rivalSeconds.push_back(end - turn);
    ratios.push_back((turn - start) / (end - turn));
  }
  constexpr double kMilliseconds = 1000.0;
  state.counters["marks"] = static_cast<double>(workload.marks.size());
  state.counters["points"] = static_cast<double>(workload.PointCount());
  state.counters["cairo_ms"] = kMilliseconds * Median(std::move(rivalSeconds));
  state.counters["ratio"] = Median(std::move(ratios));
}

void Register(const std::string& name, const WorkloadMaker& make) {
  constexpr double kMinSeconds = 3.0;
  benchmark::RegisterBenchmark(name.c_str(), DrawInTurns, make)
      ->Unit(benchmark::kMillisecond)
      ->UseManualTime()
      ->MinTime(kMinSeconds);
}

void RegisterPaths(const std::string& name, int width, int height, const PathStyle& style) {
  Register(name, [=] { return MakePaths(name, width, height, style); });
}

void RegisterAll() {
  RegisterPaths("W1", 1920, 1080, {1000, 200, 6, 0xFF});
  RegisterPaths("W2", 1920, 1080, {1000, 200, 2, 0xFF});
  RegisterPaths("W3", 3840, 2160, {5000, 200, 6, 0xFF});
  Register("W4", [] { return MakeShapes("W4", 1920, 1080, 1000, 6); });
  RegisterPaths("W5", 1920, 1080, {1, 100'000, 6, 0xFF});
  RegisterPaths("W7", 1920, 1080, {300, 200, 20, 0x80});
}

}  // namespace

int main(int argc, char** argv) {
  RegisterAll();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
