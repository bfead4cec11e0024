#!/usr/bin/env python3
"""Prints what one run of frame_benchmark says about the engine beside Cairo, one line a workload:

    build/release/benchmarks/frame/frame_benchmark --benchmark_repetitions=5 \\
        --benchmark_enable_random_interleaving=true --benchmark_format=json |
      python3 benchmarks/frame/ratios.py

Times are medians of the repetitions' wall-clock times, in milliseconds a frame.
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
    columns = ("scratch", "live", "idle")
    print("| workload | marks | points | Cairo ms | " + " | ".join(f"{c} ms | x" for c in columns) + " |")
    print("| --- |" + " ---: |" * (3 + 2 * len(columns)))
    for workload, sides in sorted(times.items()):
        if "cairo" not in sides:
            continue
        cairo = statistics.median(sides["cairo"])
        marks, points = sizes[workload]
        cells = [workload, f"{marks:.0f}", f"{points:.0f}", f"{cairo:.1f}"]
        for column in columns:
            value = statistics.median(sides.get(column, [float("nan")]))
            cells += [f"{value:.3f}", f"{cairo / value:.1f}"]
        print("| " + " | ".join(cells) + " |")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
