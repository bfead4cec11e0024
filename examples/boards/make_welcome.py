#!/usr/bin/env python3
"""Draws welcome.jsonl, the board that the demo replays: python3 make_welcome.py > welcome.jsonl

Every stroke is a few control points, run through a smooth curve and given the slight wobble of a hand.
The authors end with a mark each, after a pause, so that their names appear beside it: below and to
the right of its first point.
"""

import json
import math
import random

INK = "#FF22314F"
RED = "#FFC9304A"
PURPLE = "#FF6A45A8"
ORANGE = "#FFD9691A"
TEAL = "#FF0C6F74"
YELLOW_MARKER = "#C0FFDE66"
YELLOW_WASH = "#80FFD23F"

LIN = "\u6797\u6653"  # who writes it with two characters

hand = random.Random(1923)
author = {}


def by(name):
    """The marks from here on are that author's."""
    author["author"] = name


def emit(step):
    print(json.dumps(step, separators=(",", ":"), ensure_ascii=False))


def add(kind, color, width, points):
    points = [[round(x), round(y)] for x, y in points]
    emit({"kind": kind, "color": color, "width": width, "points": points, **author})


def place(picture, corners):
    emit({"picture": picture, "points": corners, **author})


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
    "y": (0.92, [[(0.08, 1.00), (0.12, 0.45), (0.38, 0.22), (0.66, 0.48)],
                 [(0.80, 1.00), (0.74, 0.20), (0.60, -0.40), (0.30, -0.60), (0.06, -0.45)]]),
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


def dashes(color, width, control):
    """A dashed way along a curve."""
    way = wobble(curve(control, 6.0), 1.0)
    for first in range(0, len(way) - 4, 6):
        add("path", color, width, way[first:first + 4])


def draw_title():
    write("Parchlet", 112, 236, 96, INK, 11, 0.9)
    stroke(YELLOW_MARKER, 26, [(104, 276), (360, 264), (640, 278), (884, 264)], step=18, amount=2.0)
    write("draw here, seen there", 120, 372, 34, INK, 4, 0.5)
    stroke(INK, 3, [(116, 404), (260, 409), (470, 402), (650, 410), (790, 401)], amount=1.2)
    place("compass.png", [(1652, 48), (1872, 268)])


def draw_ascent():
    dashes(RED, 6, [(1180, 742), (1150, 722), (1082, 712), (1010, 716), (948, 690), (938, 630), (966, 574), (1030, 536),
                    (1084, 490), (1130, 452), (1192, 448), (1246, 486), (1292, 512)])
    stroke(RED, 6, [(1300, 520), (1302, 470), (1301, 424)], amount=0.4)
    stroke(RED, 6, [(1301, 426), (1336, 436), (1362, 444), (1330, 456), (1302, 464)], amount=0.4)
    write("to the top", 1480, 400, 32, RED, 4, 0.5)
    arrow(RED, 4, (1468, 394), (1382, 426), -14)


def draw_swim():
    write("swim", 1046, 922, 36, PURPLE, 5, 0.5)
    for x, y in ((1030, 1010), (1160, 1034)):
        stroke(PURPLE, 3, [(x + 12 * i, y + (6 if i % 2 else -6)) for i in range(9)], step=4)


def draw_camp():
    stroke(ORANGE, 6, [(824, 728), (796, 776), (764, 824)], amount=0.6)
    stroke(ORANGE, 6, [(758, 824), (820, 828), (888, 823)], amount=0.6)
    stroke(ORANGE, 5, [(824, 734), (818, 780), (804, 824)], amount=0.6)
    stroke(ORANGE, 5, [(824, 734), (834, 780), (846, 824)], amount=0.6)
    write("picnic", 640, 590, 36, ORANGE, 5, 0.5)
    arrow(ORANGE, 4, (842, 578), (966, 620), -26)
    stroke(YELLOW_WASH, 22, ring(1040, 646, 82, 60, turns=1.02), step=14, amount=1.2)


def draw_sail():
    dashes(TEAL, 5, [(448, 812), (480, 790), (540, 776), (600, 790), (632, 812)])
    write("old fort", 236, 1036, 32, TEAL, 4, 0.5)
    stroke(TEAL, 5, ring(322, 900, 92, 56, turns=1.03), step=8)
    stroke(TEAL, 5, [(196, 690), (222, 716), (280, 722), (334, 712), (356, 686)])
    stroke(TEAL, 4, [(192, 688), (270, 694), (360, 685)])
    stroke(TEAL, 4, [(272, 690), (270, 630), (273, 566)], amount=0.5)
    stroke(TEAL, 4, [(278, 572), (312, 622), (338, 672), (308, 676), (278, 675)])
    stroke(TEAL, 4, [(265, 586), (240, 634), (218, 672), (240, 676), (265, 675)])
    write("ferry at nine", 1540, 1036, 30, TEAL, 4, 0.5)
    arrow(TEAL, 4, (1704, 976), (1758, 866), -8)


def draw_last_words():
    """One mark each, which the picture shows with the names of their authors."""
    by("Ada")
    stroke(RED, 6, [(1204, 772), (1196, 762), (1190, 752)], amount=0.4)
    by(LIN)
    stroke(PURPLE, 5, ring(1120, 912, 122, 58, turns=1.03, start=0.75), step=8)
    by("Noor")
    stroke(ORANGE, 6, [(882, 822), (856, 780), (824, 728)], amount=0.6)
    by("Kofi")
    stroke(TEAL, 5, [(424, 868), (430, 846), (438, 828)], amount=0.4)


def main():
    emit({"background": "island.png"})
    draw_title()
    for author, draw in (("Ada", draw_ascent), (LIN, draw_swim), ("Noor", draw_camp), ("Kofi", draw_sail)):
        by(author)
        draw()
    emit({"pause": 5})
    draw_last_words()


if __name__ == "__main__":
    main()
