// FrameBenchmark.cpp - what one rendering of a page costs, beside the same marks drawn straight
// with Cairo. ratios.py makes a table of the results.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <string>

#include "CairoRival.h"
#include "EnginePage.h"
#include "Workload.h"

namespace {

using WorkloadMaker = std::function<Workload()>;

void Describe(benchmark::State& state, const Workload& workload) {
  state.counters["marks"] = static_cast<double>(workload.marks.size());
  state.counters["points"] = static_cast<double>(workload.PointCount());
}

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
bool ShowTheSame(const Workload& workload, EnginePage& page) {
  constexpr double kToleratedShare = 0.005;
  CairoRival rival(workload);
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

void DrawWithEngine(benchmark::State& state, const WorkloadMaker& make) {
  const Workload workload = make();
  EnginePage page(workload);
  if (!ShowTheSame(workload, page)) {
    state.SkipWithError("the engine's page and Cairo's image differ");
    return;
  }
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(page.Draw());
  }
  Describe(state, workload);
}

void DrawWithCairo(benchmark::State& state, const WorkloadMaker& make) {
  const Workload workload = make();
  CairoRival rival(workload);
  rival.Draw();
  while (state.KeepRunning()) {
    rival.Draw();
    benchmark::ClobberMemory();
  }
  Describe(state, workload);
}

void Register(const std::string& name, const WorkloadMaker& make) {
  for (const bool engine : {true, false}) {
    benchmark::RegisterBenchmark((name + (engine ? "/engine" : "/cairo")).c_str(),
                                 engine ? DrawWithEngine : DrawWithCairo, make)
        ->Unit(benchmark::kMillisecond);
  }
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
