"""Sums up what llvm-cov exports, by room; see scripts/coverage.sh."""

import json
import os
import sys
from collections import defaultdict

ROOMS = ("src/engine", "src/document", "src/page", "src/annotation", "src/utils")


def main():
    lines = defaultdict(lambda: [0, 0])
    sides = {}  # of branches, by room, file, line, column and side; many instantiations have one
    for file in json.load(sys.stdin)["data"][0]["files"]:
        path = os.path.relpath(file["filename"])
        room = os.path.dirname(path)
        if room not in ROOMS:
            continue
        summary = file["summary"]["lines"]
        lines[room][0] += summary["covered"]
        lines[room][1] += summary["count"]
        for line, column, _, _, true, false, *_ in file["branches"]:
            for side, count in (("true", true), ("false", false)):
                place = (room, path, line, column, side)
                sides[place] = sides.get(place, 0) + count

    print(f"{'':15}{'lines':>18}{'branches':>20}")
    for room in (*ROOMS, "src"):
        covered, count = (sum(sums[i] for name, sums in lines.items() if name.startswith(room))
                          for i in (0, 1))
        of_room = [taken for place, taken in sides.items() if place[0].startswith(room)]
        taken = sum(1 for times in of_room if times)
        print(f"{room:15}{covered:6} of {count:4}{100 * covered / count:6.1f} %"
              f"{taken:6} of {len(of_room):4}{100 * taken / max(1, len(of_room)):6.1f} %")
    print("\nnever taken:")
    for (_, path, line, column, side), times in sorted(sides.items()):
        if not times:
            print(f"  {path}:{line}:{column} {side}")


if __name__ == "__main__":
    main()
