#!/usr/bin/env python3
"""Prints what one run of frame_benchmark says about the engine beside Cairo, one line a workload:

    build/release/benchmarks/frame/frame_benchmark --benchmark_repetitions=5 \\
        --benchmark_format=json | python3 benchmarks/frame/ratios.py

Every figure is the median of the repetitions: CPU milliseconds a frame, and the ratio of two frames
drawn one right after the other.
"""

import json
import statistics
import sys


def main():
    runs = {}
    failed = False
    for run in json.load(sys.stdin)["benchmarks"]:
        if run["run_type"] != "iteration":
            continue
        name = run["run_name"].split("/")[0]
        if run.get("error_occurred"):
            print(f'{name}: {run["error_message"]}', file=sys.stderr)
            failed = True
        else:
            runs.setdefault(name, []).append(run)
    print("| workload | marks | points | engine ms | Cairo ms | engine / Cairo | repetitions' ratios |")
    print("| --- | ---: | ---: | ---: | ---: | ---: | ---: |")
    for name, repetitions in runs.items():
        def median(key):
            return statistics.median(run[key] for run in repetitions)
        ratios = sorted(run["ratio"] for run in repetitions)
        print(f'| {name} | {median("marks"):.0f} | {median("points"):.0f} | {median("real_time"):.2f} '
              f'| {median("cairo_ms"):.2f} | {median("ratio"):.3f} | {ratios[0]:.3f} to {ratios[-1]:.3f} |')
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
