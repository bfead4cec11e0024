#!/usr/bin/env python3
"""Prints what one run of frame_benchmark says about the engine beside Cairo, one line a workload:

    build/release/benchmarks/frame/frame_benchmark --benchmark_repetitions=5 \\
        --benchmark_enable_random_interleaving=true --benchmark_format=json |
      python3 benchmarks/frame/ratios.py

Times are medians of the repetitions' CPU times, in milliseconds a frame.
"""

import json
import statistics
import sys


def main():
    times = {}
    sizes = {}
    failed = False
    for run in json.load(sys.stdin)["benchmarks"]:
        if run["run_type"] != "iteration":
            continue
        workload, side = run["run_name"].split("/")[:2]
        if run.get("error_occurred"):
            print(f'{run["run_name"]}: {run["error_message"]}', file=sys.stderr)
            failed = True
            continue
        times.setdefault(workload, {}).setdefault(side, []).append(run["cpu_time"])
        sizes[workload] = run["marks"], run["points"]
    print("| workload | marks | points | engine ms | Cairo ms | engine / Cairo |")
    print("| --- | ---: | ---: | ---: | ---: | ---: |")
    for workload, sides in sorted(times.items()):
        if {"engine", "cairo"} <= sides.keys():
            engine, cairo = (statistics.median(sides[side]) for side in ("engine", "cairo"))
            marks, points = sizes[workload]
            print(f"| {workload} | {marks:.0f} | {points:.0f} | {engine:.2f} | {cairo:.2f} "
                  f"| {engine / cairo:.3f} |")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
