// PointerBenchmark.cpp - what one pointer event or one message costs on pages of 100, 1,000 and
// 10,000 free-hand marks of 200 points, beside the plain way of testing every segment of every
// mark.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <parchlet/Utils.h>

#include "workload/EnginePage.h"
#include "workload/Random.h"
#include "workload/Workload.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr std::size_t kPointsPerMark = 200;
constexpr std::size_t kGestures = 256;

Workload MakeMarks(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  return MakePaths("marks", kWidth, kHeight, {count, kPointsPerMark, 6, 0xFF});
}

struct Segment {
  POINT from;
  POINT to;
};

// An eraser's steps of up to 12 pixels each way, all over the page.
std::vector<Segment> MakeSegments() {
  Random random(7);
  std::vector<Segment> segments;
  for (std::size_t i = 0; i < kGestures; ++i) {
    const POINT from = {static_cast<LONG>(random.Below(kWidth)),
                        static_cast<LONG>(random.Below(kHeight))};
    const auto step = [&] { return static_cast<LONG>(random.Below(25)) - 12; };
    segments.push_back({from, {from.x + step(), from.y + step()}});
  }
  return segments;
}

// A page whose marks have their pixels, as they do after the first frame.
std::unique_ptr<EnginePage> MakePage(const Workload& workload) {
  auto page = std::make_unique<EnginePage>(workload);
  page->ShowIdle();
  return page;
}

void EraserSegment(benchmark::State& state) {
  const Workload workload = MakeMarks(state);
  const std::unique_ptr<EnginePage> page = MakePage(workload);
  const std::vector<Segment> segments = MakeSegments();
  std::size_t next = 0;
  std::size_t found = 0;
  for (auto _ : state) {
    const Segment& segment = segments[next++ % kGestures];
    found += page->Page().EraseAnnotations("", "", segment.from, segment.to).size();
  }
  state.counters["hits"] =
      benchmark::Counter(static_cast<double>(found), benchmark::Counter::kAvgIterations);
}

bool CrossesAny(const Segment& eraser, const BenchMark& mark) {
  for (std::size_t i = 1; i < mark.points.size(); ++i) {
    if (Utils::IsLineIntersect(eraser.from, eraser.to, mark.points[i - 1], mark.points[i])) {
      return true;
    }
  }
  return false;
}

void EverySegment(benchmark::State& state) {
  const Workload workload = MakeMarks(state);
  const std::vector<Segment> segments = MakeSegments();
  std::size_t next = 0;
  std::size_t found = 0;
  for (auto _ : state) {
    const Segment& segment = segments[next++ % kGestures];
    for (const BenchMark& mark : workload.marks) {
      found += CrossesAny(segment, mark) ? 1 : 0;
    }
  }
  state.counters["hits"] =
      benchmark::Counter(static_cast<double>(found), benchmark::Counter::kAvgIterations);
}

void PointQuery(benchmark::State& state) {
  const Workload workload = MakeMarks(state);
  const std::unique_ptr<EnginePage> page = MakePage(workload);
  const std::vector<Segment> segments = MakeSegments();
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        page->Page().EraseAnnotations("", "", segments[next++ % kGestures].from));
  }
}

// A band that takes in a sixteenth of the page.
void RubberBandStep(benchmark::State& state) {
  const Workload workload = MakeMarks(state);
  const std::unique_ptr<EnginePage> page = MakePage(workload);
  AnnotationPage& marks = page->Page();
  marks.StartSelecting("", "", {0, 0});
  LONG step = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(marks.MoveSelecting({kWidth / 4 + step++ % 2, kHeight / 4}));
  }
  marks.EndSelecting();
}

// A fragment of 200 points that replaces one of a mark on the page.
void MergeFragment(benchmark::State& state) {
  const Workload workload = MakeMarks(state);
  const std::unique_ptr<EnginePage> page = MakePage(workload);
  std::vector<std::unique_ptr<Annotation>> fragments;
  for (std::size_t i = 0; i < std::min(kGestures, workload.marks.size()); ++i) {
    fragments.push_back(MakeAnnotation(workload, i));
    fragments.back()->subModelIndex = 1;
  }
  std::size_t next = 0;
  for (auto _ : state) {
    page->Page().AddAnnotation(fragments[next++ % fragments.size()].get(), true);
  }
}

void AllSizes(benchmark::internal::Benchmark* measured) {
  measured->Arg(100)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(EraserSegment)->Apply(AllSizes);
BENCHMARK(EverySegment)->Apply(AllSizes);
BENCHMARK(PointQuery)->Apply(AllSizes);
BENCHMARK(RubberBandStep)->Apply(AllSizes);
BENCHMARK(MergeFragment)->Apply(AllSizes);

}  // namespace

BENCHMARK_MAIN();
