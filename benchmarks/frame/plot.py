#!/usr/bin/env python3
"""Draws how a frame's cost grows, from one run of frame_benchmark, as an SVG file:

    build/release/benchmarks/frame/frame_benchmark --benchmark_filter=Grow \\
        --benchmark_format=json | python3 benchmarks/frame/plot.py docs/images/growth.svg

Both axes are logarithmic; every panel is one thing that grows.
"""

import json
import math
import statistics
import sys

TITLES = {
    "marks": "paths on the page",
    "points": "points a path",
    "pen": "pen width, px",
    "rows": "page height, px",
}
LINES = (("cairo_ms", "Cairo", "#8a8f98"), ("scratch_ms", "from scratch", "#c0392b"),
         ("live_ms", "live", "#d68910"), ("idle_ms", "idle", "#1f7a6b"))
WIDTH, HEIGHT, LEFT, TOP, GAP = 250, 260, 60, 50, 46
LOW, HIGH = 0.01, 10_000.0  # milliseconds


def read(stream):
    """{what grows: {value: {counter: milliseconds}}}"""
    panels = {}
    for run in json.load(stream)["benchmarks"]:
        if run["run_type"] != "iteration" or not run["run_name"].startswith("Grow/"):
            continue
        what, value = run["run_name"].split("/")[1].split(":")
        panels.setdefault(what, {}).setdefault(int(value), []).append(run)
    return {what: {value: {key: statistics.median(run[key] for run in runs)
                           for key, _, _ in LINES}
                   for value, runs in values.items()}
            for what, values in panels.items()}


def y_of(ms):
    share = (math.log10(ms) - math.log10(LOW)) / (math.log10(HIGH) - math.log10(LOW))
    return TOP + HEIGHT * (1 - share)


def panel(what, values, left):
    marks = sorted(values)
    low, high = math.log10(marks[0]), math.log10(marks[-1])

    def x_of(value):
        return left + WIDTH * (math.log10(value) - low) / (high - low)

    out = [f'<rect x="{left}" y="{TOP}" width="{WIDTH}" height="{HEIGHT}" fill="none" stroke="#ccc"/>',
           f'<text x="{left + WIDTH / 2}" y="{TOP + HEIGHT + 36}" text-anchor="middle">{TITLES[what]}</text>']
    for value in marks:
        out.append(f'<text x="{x_of(value):.1f}" y="{TOP + HEIGHT + 16}" text-anchor="middle" '
                   f'font-size="10">{value:,}</text>')
    for key, _, color in LINES:
        points = " ".join(f"{x_of(value):.1f},{y_of(values[value][key]):.1f}" for value in marks)
        out.append(f'<polyline points="{points}" fill="none" stroke="{color}" stroke-width="2"/>')
        out += [f'<circle cx="{x_of(value):.1f}" cy="{y_of(values[value][key]):.1f}" r="3" fill="{color}"/>'
                for value in marks]
    return out


def main():
    panels = read(sys.stdin)
    width = LEFT + len(panels) * (WIDTH + GAP)
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{TOP + HEIGHT + 50}" '
           'font-family="sans-serif" font-size="12">',
           '<rect width="100%" height="100%" fill="white"/>']
    for i, (_, name, color) in enumerate(LINES):
        out.append(f'<text x="{LEFT + i * 120}" y="24" fill="{color}" font-weight="bold">{name}</text>')
    exponent = int(math.log10(LOW))
    while 10.0 ** exponent <= HIGH:
        y = y_of(10.0 ** exponent)
        out.append(f'<text x="{LEFT - 6}" y="{y + 4:.1f}" text-anchor="end" font-size="10">'
                   f'{10.0 ** exponent:g} ms</text>')
        out.append(f'<line x1="{LEFT}" x2="{width - GAP}" y1="{y:.1f}" y2="{y:.1f}" stroke="#eee"/>')
        exponent += 1
    for i, (what, values) in enumerate(panels.items()):
        out += panel(what, values, LEFT + i * (WIDTH + GAP))
    out.append("</svg>")
    with open(sys.argv[1], "w", encoding="utf-8") as file:
        file.write("\n".join(out) + "\n")


if __name__ == "__main__":
    main()
