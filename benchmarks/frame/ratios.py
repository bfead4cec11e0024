#!/usr/bin/env python3
"""Prints what one run of frame_benchmark says about the engine beside Cairo, one line a workload:

    build/release/benchmarks/frame/frame_benchmark --benchmark_repetitions=5 \\
        --benchmark_format=json | python3 benchmarks/frame/ratios.py

Every figure is the median of the repetitions: CPU milliseconds a frame, and how many times as long
Cairo took in the same round.
"""

import json
import statistics
import sys


def main():
    failed = False
    runs = {}
    for run in json.load(sys.stdin)["benchmarks"]:
        if run["run_type"] != "iteration":
            continue
        name = run["run_name"].split("/min_time")[0]
        if run.get("error_occurred"):
            print(f'{name}: {run["error_message"]}', file=sys.stderr)
            failed = True
        else:
            runs.setdefault(name, []).append(run)
    columns = ("scratch", "live", "idle")
    print("| workload | marks | points | Cairo ms | " + " | ".join(f"{c} ms | x" for c in columns) + " |")
    print("| --- |" + " ---: |" * (3 + 2 * len(columns)))
    for name, repetitions in runs.items():
        def median(key):
            return statistics.median(run[key] for run in repetitions)
        cells = [name, f'{median("marks"):.0f}', f'{median("points"):.0f}', f'{median("cairo_ms"):.1f}']
        for column in columns:
            cells += [f'{median(column + "_ms"):.3f}', f'{median(column + "_gain"):.1f}']
        print("| " + " | ".join(cells) + " |")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
