#!/usr/bin/env python3
"""Draws the pictures of docs/painter.md: python3 scripts/painter/draw.py docs/images"""

import math
import pathlib
import sys

from stroke import Stroke
from svg import AMBER, BLUE, GREEN, GRID, INK, RED, Picture

STROKE = Stroke([(5, 8), (18, 10), (26, 21), (41, 25), (38, 11)], 6)
WIDTH, HEIGHT = 56, 32


def draw_tiles():
    """A stroke of 45 points gets one more; the changed parts, tiles, areas and bands."""
    tile, part, margin = 64, 16, 7
    line = [(30 + 12 * i, 150 + round(70 * math.sin(i / 5.5))) for i in range(46)]

    def parts(points):
        result = {}
        for first in range(0, len(points) - 1, part):
            seen = tuple(points[max(first - 1, 0):first + part + 2])
            xs, ys = [p[0] for p in seen], [p[1] for p in seen]
            result[seen] = (min(xs) - margin, min(ys) - margin, max(xs) + margin, max(ys) + margin)
        return result

    old, new = parts(line[:-1]), parts(line)
    changed = [box for seen, box in (old | new).items() if (seen in old) != (seen in new)]
    tiles = sorted({(row, column) for left, top, right, bottom in changed
                    for row in range(top // tile, bottom // tile + 1)
                    for column in range(left // tile, right // tile + 1)})
    picture = Picture(640, 320, 1)
    for row, column in tiles:
        picture.rect(column * tile, row * tile, tile, tile, fill=AMBER, opacity=0.35)
    picture.grid(tile)
    for left, top, right, bottom in new.values():
        picture.rect(left, top, right - left + 1, bottom - top + 1, stroke=BLUE, thick=1.2)
    picture.line(line[:-1], INK, 6)
    picture.line(line[-2:], RED, 6)
    columns = [column for _, column in tiles]
    rows = [row for row, _ in tiles]
    picture.rect(min(columns) * tile, min(rows) * tile, (max(columns) - min(columns) + 1) * tile,
                 (max(rows) - min(rows) + 1) * tile, stroke=RED, thick=2.5)
    picture.text(8, 20, "parts of 16 segments and their bounds", BLUE)
    picture.text(8, 38, "tiles whose hash changed: one area to paint", RED)
    return picture


def outline(stroke, i):
    """The corners of segment i's piece."""
    tangent = stroke.tangents[i + 1]
    normal = -tangent[1], tangent[0]
    corners = []
    for point, sides in ((i, (1, -1)), (i + 1, (-1, 1))):
        x, y = stroke.points[point]
        joint = stroke.joints[point]
        a, b = joint["normal"] if joint["seamed"] else tangent
        for side in sides:
            edge = side * stroke.half_width
            # Where the strip's edge meets the end: edge * normal + t * tangent, with (a, b) . it = 0.
            t = -edge * (a * normal[0] + b * normal[1]) / (a * tangent[0] + b * tangent[1])
            corners.append((x + edge * normal[0] + t * tangent[0], y + edge * normal[1] + t * tangent[1]))
    return corners


def draw_chunk():
    """The stroke's points, segments, seams and its corner."""
    picture = Picture(WIDTH, HEIGHT, 12)
    picture.grid(1, "#eef0f3")
    for i, color in enumerate((BLUE, GREEN, BLUE, GREEN)):
        picture.line(outline(STROKE, i), color, 1.5, closed=True, fill=color, opacity=0.25)
    joint = 3
    at = STROKE.points[joint]
    e0, e1 = STROKE.outer_ends(joint)
    turn = STROKE.joints[joint]["one_plus_cos"]
    ends = [(at[0] + e[0], at[1] + e[1]) for e in (e0, e1)]
    tip = at[0] + (e0[0] + e1[0]) / turn, at[1] + (e0[1] + e1[1]) / turn
    picture.line([at, ends[0], tip, ends[1]], AMBER, 1.5, closed=True, fill=AMBER, opacity=0.5)
    for i in (1, 2):
        a, b = STROKE.joints[i]["normal"]
        length = math.hypot(a, b) / 6
        x, y = STROKE.points[i]
        picture.line([(x - b / length, y + a / length), (x + b / length, y - a / length)], RED, 2, "6 3")
    context = STROKE.context
    picture.line(context[:2], INK, 1.2, "3 3")
    picture.line(context[-2:], INK, 1.2, "3 3")
    picture.line(STROKE.points, INK, 1.5)
    for i, (x, y) in enumerate(STROKE.points):
        picture.dot(x, y)
        picture.text(x + 0.6, y - 0.7, f"P{i}", size=14)
    picture.text(11, 3, "seam at P1", RED)
    picture.text(17.2, 27, "seam at P2", RED)
    picture.text(44, 19, "P3 turns sharply:", AMBER)
    picture.text(44, 20.5, "two flat ends", AMBER)
    picture.text(44, 22, "and a corner", AMBER)
    picture.text(0, 13.5, "flat cap", INK)
    return picture


def shade(picture, left, top, size, origin, value):
    picture.cells({(left + x, top + y): value(origin[0] + x, origin[1] + y) / 255
                   for y in range(size) for x in range(size)}, INK)
    picture.grid(1, GRID, 0.5, left, top, size, size)


def draw_piece():
    """The piece of segment P1-P2: strip, start, end and what they leave."""
    size, gap, origin = 20, 3, (12, 5)
    piece = STROKE.pieces[1]
    panels = [("strip", piece.strip_coverage),
              ("start: seam at P1", lambda x, y: min(max(piece.start.at(x, y), 0), 255)),
              ("end: seam at P2", lambda x, y: min(max(piece.end.at(x, y), 0), 255)),
              ("strip x (start - end)", piece.coverage)]
    picture = Picture(4 * size + 3 * gap, size + 3, 8)
    for i, (title, value) in enumerate(panels):
        left = i * (size + gap)
        picture.text(left, 1.2, title, size=14)
        shade(picture, left, 3, size, origin, value)
        points = [(left + x - origin[0], 3 + y - origin[1]) for x, y in STROKE.points[1:3]]
        picture.line(points, RED, 1.5)
    return picture


def draw_seam():
    """Coverage around the seam at P1, of both pieces and of their sum."""
    columns, rows, gap, origin = 7, 9, 1, (15, 6)
    first, second = STROKE.pieces[:2]
    panels = [("piece P0-P1", first.coverage, BLUE), ("piece P1-P2", second.coverage, GREEN),
              ("sum", lambda x, y: min(255, first.coverage(x, y) + second.coverage(x, y)), INK)]
    picture = Picture(3 * columns + 2 * gap, rows + 1, 30)
    for i, (title, value, color) in enumerate(panels):
        left = i * (columns + gap)
        picture.text(left - 0.4, 0.1, title, color, 15)
        shown = {(left + x, y + 1): value(origin[0] + x, origin[1] + y)
                 for y in range(rows) for x in range(columns)}
        picture.cells({at: 0.6 * coverage / 255 for at, coverage in shown.items()}, color)
        for (x, y), coverage in shown.items():
            if coverage:
                picture.text(x, y + 0.15, str(coverage), size=11, anchor="middle")
        picture.grid(1, GRID, 1, left, 1, columns, rows)
    return picture


def draw_mask():
    """The whole stroke in the mask, its touched groups, and blended over a ground."""
    picture = Picture(2 * WIDTH + 4, HEIGHT + 3, 7)
    shares = {(x, y): STROKE.coverage(x, y) / 255 for y in range(HEIGHT) for x in range(WIDTH)}
    picture.text(0, 1.2, "the coverage mask: columns of 8 pixels, touched groups", size=14)
    for y in range(HEIGHT):
        for column in range(WIDTH // 8):
            if any(shares[x, y] for x in range(8 * column, 8 * column + 8)):
                picture.rect(8 * column, y + 3, 8, 1, fill=AMBER, opacity=0.4)
    left = WIDTH + 4
    picture.text(left, 1.2, "blended: translucent ink over the ground", size=14)
    picture.rect(left, 3, WIDTH, HEIGHT, fill="#f4e9c9")
    picture.rect(left, 12, WIDTH, 8, fill=BLUE, opacity=0.8)
    picture.cells({(x, y + 3): share for (x, y), share in shares.items()}, INK)
    picture.cells({(left + x, y + 3): 0.6 * share for (x, y), share in shares.items()}, RED)
    picture.grid(8, "#8a93a3", 0.8, 0, 3, WIDTH, HEIGHT)
    return picture


def main():
    folder = pathlib.Path(sys.argv[1])
    for name, draw in (("tiles", draw_tiles), ("chunk", draw_chunk), ("piece", draw_piece),
                       ("seam", draw_seam), ("mask", draw_mask)):
        draw().write(folder / f"painter-{name}.svg")


main()
