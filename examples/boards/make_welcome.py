#!/usr/bin/env python3
"""Draws welcome.jsonl, the board that the demo replays: python3 make_welcome.py > welcome.jsonl

Every stroke is a few control points, run through a smooth curve and given the slight wobble of a hand.
The page reads the same in whatever order its marks are painted.
"""

import json
import math
import random

INK = "#FF22314F"
RED = "#FFD1495B"
BLUE = "#FF2E6F9E"
GREEN = "#FF3C7A4B"
BROWN = "#FF7A5638"
ORANGE = "#FFE8912D"
GREY = "#FF8A94A6"
YELLOW_MARKER = "#66FFD23F"
PINK_MARKER = "#48F26D85"
GREEN_WASH = "#3860A561"
BLUE_WASH = "#3049A0D8"

hand = random.Random(1923)
marks = []


def add(kind, color, width, points):
    points = [[round(x), round(y)] for x, y in points]
    marks.append({"kind": kind, "color": color, "width": width, "points": points})


def curve(control, step):
    """Points every `step` pixels or so along a smooth spline through `control`."""
    if len(control) == 2:
        control = [control[0], mix(control[0], control[1], 0.5), control[1]]
    ends = [control[0], *control, control[-1]]
    out = [control[0]]
    for a, b, c, d in zip(ends, ends[1:], ends[2:], ends[3:]):
        count = max(1, round(math.dist(b, c) / step))
        for i in range(1, count + 1):
            t = i / count
            out.append(tuple(
                0.5 * (2 * q + (r - p) * t + (2 * p - 5 * q + 4 * r - s) * t * t
                       + (3 * q - p - 3 * r + s) * t * t * t)
                for p, q, r, s in zip(a, b, c, d)))
    return out


def mix(a, b, t):
    return (a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t)


def wobble(points, amount):
    """Shifts the points by slow waves, so that neighbours move together as under a hand."""
    phase = [hand.uniform(0, 2 * math.pi) for _ in range(4)]
    length = 0
    out = []
    for i, (x, y) in enumerate(points):
        if i:
            length += math.dist(points[i - 1], points[i])
        dx = math.sin(length / 37 + phase[0]) + 0.5 * math.sin(length / 13 + phase[1])
        dy = math.sin(length / 41 + phase[2]) + 0.5 * math.sin(length / 11 + phase[3])
        out.append((x + amount * dx, y + amount * dy))
    return out


def stroke(color, width, control, step=6.0, amount=0.8):
    add("path", color, width, wobble(curve(control, step), amount))


def ring(cx, cy, rx, ry, turns=1.0, start=-2.0):
    """Control points of a loop by hand: it ends a little off where it began."""
    count = round(10 * turns)
    return [(cx + rx * (1 + 0.02 * i / count) * math.cos(start + turns * 2 * math.pi * i / count),
             cy + ry * (1 + 0.02 * i / count) * math.sin(start + turns * 2 * math.pi * i / count))
            for i in range(count + 1)]


# Letters: strokes in a box whose baseline is y 0 and whose small letters are 1 high, y upwards.
BOWL = [(0.80, 0.78), (0.52, 1.00), (0.16, 0.82), (0.06, 0.40), (0.26, 0.03), (0.58, 0.12), (0.78, 0.55)]
ARCH = [(0.11, 0.50), (0.34, 0.93), (0.64, 0.96), (0.76, 0.62), (0.76, 0.25), (0.92, 0.02)]
LETTERS = {
    "P": (1.12, [[(0.14, 1.75), (0.12, 0.90), (0.08, -0.02)],
                 [(-0.12, 1.52), (0.26, 1.80), (0.82, 1.72), (1.00, 1.33), (0.74, 0.94), (0.14, 0.84)]]),
    "a": (1.00, [BOWL, [(0.81, 1.00), (0.78, 0.40), (0.85, 0.08), (1.00, 0.04)]]),
    "c": (0.84, [[(0.76, 0.82), (0.48, 1.00), (0.15, 0.78), (0.08, 0.36), (0.32, 0.02), (0.62, 0.06),
                  (0.80, 0.26)]]),
    "d": (1.00, [BOWL, [(0.82, 1.80), (0.79, 0.90), (0.83, 0.14), (1.00, 0.04)]]),
    "e": (0.92, [[(0.10, 0.48), (0.46, 0.50), (0.76, 0.62), (0.72, 0.88), (0.46, 1.01), (0.16, 0.80),
                  (0.08, 0.38), (0.34, 0.01), (0.64, 0.05), (0.86, 0.25)]]),
    "f": (0.70, [[(0.72, 1.62), (0.48, 1.78), (0.30, 1.45), (0.28, 0.70), (0.26, -0.02)],
                 [(0.02, 0.98), (0.34, 1.01), (0.62, 1.02)]]),
    "g": (0.98, [BOWL, [(0.82, 1.00), (0.80, 0.20), (0.74, -0.42), (0.42, -0.62), (0.12, -0.45)]]),
    "h": (0.98, [[(0.12, 1.80), (0.10, 0.90), (0.10, -0.02)], ARCH]),
    "i": (0.40, [[(0.14, 0.98), (0.12, 0.40), (0.18, 0.08), (0.34, 0.03)], [(0.16, 1.38), (0.16, 1.38)]]),
    "l": (0.52, [[(0.14, 1.80), (0.12, 0.90), (0.14, 0.22), (0.30, 0.02), (0.48, 0.10)]]),
    "m": (1.40, [[(0.10, 1.00), (0.11, 0.50), (0.10, -0.02)],
                 [(0.11, 0.50), (0.30, 0.92), (0.52, 0.94), (0.62, 0.62), (0.62, -0.02)],
                 [(0.62, 0.50), (0.82, 0.92), (1.04, 0.94), (1.14, 0.62), (1.15, 0.22), (1.32, 0.02)]]),
    "n": (0.98, [[(0.10, 1.00), (0.11, 0.50), (0.10, -0.02)], ARCH]),
    "o": (0.90, [[(0.46, 1.00), (0.14, 0.80), (0.08, 0.36), (0.36, 0.00), (0.70, 0.16), (0.80, 0.62),
                  (0.56, 0.98), (0.42, 1.00)]]),
    "p": (0.94, [[(0.12, 1.00), (0.12, 0.20), (0.10, -0.65)],
                 [(0.12, 0.66), (0.38, 1.00), (0.72, 0.88), (0.80, 0.46), (0.58, 0.04), (0.14, 0.14)]]),
    "r": (0.72, [[(0.10, 1.00), (0.12, 0.50), (0.11, -0.02)],
                 [(0.12, 0.52), (0.30, 0.88), (0.52, 1.00), (0.70, 0.92)]]),
    "s": (0.74, [[(0.64, 0.86), (0.40, 1.02), (0.14, 0.84), (0.24, 0.58), (0.54, 0.42), (0.62, 0.16),
                  (0.38, -0.01), (0.06, 0.12)]]),
    "t": (0.76, [[(0.30, 1.50), (0.28, 0.70), (0.32, 0.16), (0.50, 0.00), (0.70, 0.10)],
                 [(0.02, 1.02), (0.34, 1.03), (0.64, 1.07)]]),
    "w": (1.16, [[(0.04, 1.00), (0.12, 0.35), (0.28, 0.02), (0.46, 0.30), (0.54, 0.82)],
                 [(0.55, 0.82), (0.62, 0.25), (0.80, 0.02), (0.98, 0.40), (1.06, 1.00)]]),
    ",": (0.40, [[(0.18, 0.06), (0.16, -0.08), (0.06, -0.26)]]),
}
SPACE = 0.62


def write(text, x, baseline, size, color, width, amount):
    """Writes a line of text; `size` is the height of a small letter. Gives the x after it."""
    for letter in text:
        if letter == " ":
            x += SPACE * size
            continue
        advance, strokes = LETTERS[letter]
        tilt = hand.uniform(-0.02, 0.02)
        lift = hand.uniform(-0.03, 0.03)
        for control in strokes:
            placed = [(x + size * (px + (0.10 + tilt) * py), baseline - size * (py + lift))
                      for px, py in control]
            stroke(color, width, placed, step=max(4.5, size / 12), amount=amount)
        x += (advance + 0.12) * size
    return x


def arrow(color, width, start, end, bow):
    """A bowed arrow; its head is two strokes, as hands draw them."""
    middle = mix(start, end, 0.5)
    control = [start, (middle[0], middle[1] + bow), end]
    stroke(color, width, control)
    heading = math.atan2(end[1] - control[1][1], end[0] - control[1][0])
    for side in (-1, 1):
        angle = heading + math.pi + side * 0.5
        stroke(color, width, [(end[0] + 34 * math.cos(angle), end[1] + 34 * math.sin(angle)),
                              (end[0] + 3 * math.cos(heading), end[1] + 3 * math.sin(heading))], amount=0.4)


def draw_title():
    write("Parchlet", 130, 276, 118, INK, 13, 1.0)
    stroke(YELLOW_MARKER, 30, [(118, 322), (420, 312), (760, 326), (1085, 310)], step=18, amount=2.0)
    stroke(YELLOW_MARKER, 30, [(190, 342), (480, 334), (800, 344), (1030, 334)], step=18, amount=2.0)
    write("draw here, seen there", 136, 452, 40, RED, 4, 0.5)
    stroke(RED, 3, [(132, 486), (300, 492), (540, 485), (760, 494), (922, 483)], amount=1.2)


def draw_diagram():
    add("rectangle", BLUE, 5, [(110, 590), (350, 740)])
    write("host", 146, 698, 46, INK, 5, 0.5)
    add("ellipse", RED, 5, [(450, 572), (730, 760)])
    stroke(PINK_MARKER, 14, ring(590, 666, 128, 82, turns=1.02), step=14, amount=1.0)
    write("engine", 487, 684, 34, INK, 5, 0.5)
    add("rectangle", GREEN, 5, [(830, 590), (1070, 740)])
    add("line", GREEN, 5, [(830, 620), (1070, 620)])
    for x, color in ((850, RED), (874, ORANGE), (898, GREEN)):
        add("ellipse", color, 3, [(x, 600), (x + 12, 612)])
    write("page", 866, 696, 42, INK, 5, 0.5)
    arrow(INK, 4, (362, 668), (436, 666), -10)
    arrow(INK, 4, (744, 666), (816, 668), -10)


def draw_frames():
    """A film strip: a star grows from frame to frame."""
    star = []
    for i in range(6):
        angle = -math.pi / 2 + i * 4 * math.pi / 5
        star.append((62 * math.cos(angle), 62 * math.sin(angle)))
    for frame in range(5):
        left = 110 + frame * 196
        add("rectangle", GREY, 3, [(left, 826), (left + 176, 990)])
        for corner in range(frame + 1):
            a, b = star[corner], star[corner + 1]
            line = [(left + 88 + p[0], 912 + p[1]) for p in (a, b)]
            stroke(ORANGE if corner == frame else INK, 5, line, amount=0.6)


def draw_sky():
    add("ellipse", ORANGE, 7, [(1620, 150), (1740, 270)])
    for i in range(10):
        angle = i * math.pi / 5 + 0.15
        inner, outer = 82, 112 + 10 * (i % 2)
        add("line", ORANGE, 5, [(1680 + inner * math.cos(angle), 210 + inner * math.sin(angle)),
                                (1680 + outer * math.cos(angle), 210 + outer * math.sin(angle))])
    for x, y, size in ((1330, 210, 30), (1404, 168, 24), (1424, 246, 20)):
        stroke(INK, 4, [(x - size, y - size * 0.3), (x - size * 0.5, y - size * 0.55), (x, y)], amount=0.4)
        stroke(INK, 4, [(x, y), (x + size * 0.5, y - size * 0.6), (x + size, y - size * 0.35)], amount=0.4)


def draw_hills():
    stroke(GREY, 5, [(1180, 560), (1240, 500), (1300, 420), (1346, 392), (1392, 436), (1436, 470),
                     (1480, 420), (1530, 372), (1580, 420), (1622, 478), (1650, 520), (1664, 548)])
    stroke(GREY, 3, [(1314, 446), (1334, 436), (1346, 456), (1364, 438), (1384, 450)])
    stroke(GREY, 3, [(1500, 428), (1520, 414), (1536, 434), (1552, 416), (1570, 430)])
    stroke(GREEN, 6, [(1170, 650), (1260, 600), (1380, 588), (1500, 640), (1590, 664), (1672, 672)])
    for i in range(3):
        y = 676 + 36 * i
        stroke(GREEN_WASH, 30, [(1450, y), (1500, y + 10), (1570, y + 26), (1680 - 14 * i, y + 34)],
               step=18, amount=2.0)


def draw_house():
    add("rectangle", BROWN, 5, [(1258, 668), (1408, 778)])
    stroke(RED, 7, [(1236, 680), (1290, 634), (1334, 596)], amount=0.6)
    stroke(RED, 7, [(1331, 596), (1380, 636), (1430, 680)], amount=0.6)
    add("rectangle", BROWN, 4, [(1350, 712), (1388, 778)])
    add("rectangle", BLUE, 4, [(1280, 700), (1324, 738)])
    add("line", BLUE, 3, [(1302, 700), (1302, 738)])
    add("line", BLUE, 3, [(1280, 719), (1324, 719)])
    stroke(GREY, 4, [(1392, 618), (1402, 596), (1388, 578), (1404, 556), (1396, 538)], amount=0.8)


def draw_tree():
    stroke(BROWN, 9, [(1747, 792), (1753, 730), (1749, 664)])
    stroke(BROWN, 5, [(1752, 716), (1772, 690), (1788, 676)])
    crown = []
    for i in range(64):
        angle = i * 0.55
        radius = 26 + 0.95 * i + 7 * math.sin(2.6 * i)
        crown.append((1752 + radius * math.cos(angle), 604 + 0.82 * radius * math.sin(angle)))
    stroke(GREEN, 5, crown, amount=1.2)


def draw_lake():
    stroke(BLUE, 5, [(1160, 846), (1290, 820), (1440, 832), (1600, 812), (1740, 826), (1850, 814)])
    for i in range(3):
        y = 872 + 36 * i
        stroke(BLUE_WASH, 30, [(1180, y), (1380, y - 8), (1600, y + 4), (1840, y - 6)], step=18, amount=2.0)
    for x, y, length in ((1200, 900, 120), (1640, 880, 150), (1690, 958, 130)):
        crests = [(x + length * i / 8, y + (5 if i % 2 else -5)) for i in range(9)]
        stroke(BLUE, 3, crests, step=4)
    stroke(BROWN, 6, [(1432, 908), (1462, 938), (1530, 944), (1580, 934), (1604, 904)])
    stroke(BROWN, 5, [(1430, 908), (1515, 913), (1606, 904)])
    stroke(INK, 5, [(1518, 906), (1516, 850), (1519, 776)], amount=0.5)
    stroke(RED, 4, [(1524, 784), (1560, 836), (1586, 890)])
    stroke(RED, 4, [(1588, 890), (1556, 893), (1524, 891)])
    stroke(ORANGE, 4, [(1511, 800), (1486, 850), (1462, 890)])
    stroke(ORANGE, 4, [(1460, 890), (1486, 893), (1511, 891)])


def main():
    draw_title()
    draw_diagram()
    draw_frames()
    draw_sky()
    draw_hills()
    draw_house()
    draw_tree()
    draw_lake()
    for mark in marks:
        print(json.dumps(mark, separators=(",", ":")))


if __name__ == "__main__":
    main()
