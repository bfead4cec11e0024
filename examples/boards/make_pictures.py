#!/usr/bin/env python3
"""Draws the pictures of welcome.jsonl beside this file: island.png, a map to mark up, and compass.png."""

import math
import random
import struct
import zlib
from pathlib import Path

WIDTH, HEIGHT = 1280, 720

# Heights at which a colour ends and the next begins; the sea's level is 0. Only land is shaded.
BANDS = [
    (-0.34, (176, 214, 229)), (-0.20, (188, 222, 234)), (-0.09, (203, 231, 239)), (0.0, (221, 241, 243)),
    (0.035, (246, 232, 196)), (0.13, (221, 233, 184)), (0.24, (201, 222, 161)), (0.36, (180, 208, 142)),
    (0.49, (208, 206, 158)), (0.62, (222, 202, 160)), (0.75, (206, 182, 146)), (0.86, (196, 176, 156)),
    (9.99, (250, 248, 244)),
]
COAST = (122, 148, 150)
CONTOUR = 0.90  # how much darker land is along the line between two bands
SHADES = 7


def noise(cell, seed):
    """A function of (x, y) that wanders smoothly between -1 and 1, over `cell` pixels a step."""
    values = random.Random(seed)
    columns, rows = WIDTH // cell + 3, HEIGHT // cell + 3
    lattice = [[values.uniform(-1, 1) for _ in range(columns)] for _ in range(rows)]

    def at(x, y):
        u, v = x / cell, y / cell
        i, j = int(u), int(v)
        u, v = u - i, v - j
        u, v = u * u * (3 - 2 * u), v * v * (3 - 2 * v)
        upper, lower = lattice[j], lattice[j + 1]
        top = upper[i] + (upper[i + 1] - upper[i]) * u
        bottom = lower[i] + (lower[i + 1] - lower[i]) * u
        return top + (bottom - top) * v

    return at


def heights():
    octaves = [(noise(256 >> n, 40 + n), 0.30 / 1.9 ** n) for n in range(5)]
    # Centre, radii, height: two mountains on a broad island, an islet, and a lagoon bitten out.
    hills = [(800, 430, 430, 260, 0.66), (875, 345, 130, 105, 0.56), (990, 425, 120, 100, 0.40),
             (640, 520, 150, 110, 0.16), (215, 600, 100, 60, 0.66), (770, 690, 130, 80, -0.50),
             (520, 375, 80, 60, -0.28), (700, 430, 46, 30, -0.42)]
    field = []
    for y in range(HEIGHT + 1):
        row = []
        for x in range(WIDTH + 1):
            h = -0.40
            for cx, cy, rx, ry, peak in hills:
                far = ((x - cx) / rx) ** 2 + ((y - cy) / ry) ** 2
                if far < 9:
                    h += peak * math.exp(-far)
            for wander, size in octaves:
                h += size * wander(x, y)
            row.append(h)
        field.append(row)
    return field


def blend(a, b, t):
    return tuple(p + (q - p) * t for p, q in zip(a, b))


def color_at(field, x, y):
    h = field[y][x]
    east, south = field[y][x + 1] - h, field[y + 1][x] - h
    steep = max(math.hypot(east, south), 1e-5)
    band = next(i for i, (top, _) in enumerate(BANDS) if h < top)
    color = BANDS[band][1]
    # Lines are a pixel and a half wide and, like the edges, soft in three steps.
    above = (BANDS[band][0] - h) / steep
    below = (h - BANDS[band - 1][0]) / steep if band else 99
    line = max(0, min(1, 1.5 - min(above, below)))
    line = round(line * 3) / 3
    land = h >= 0
    shade = 1.0
    if land:
        light = max(-1, min(1, (east + south) * 26))
        shade = 1 - 0.16 * round((0.3 - light) * (SHADES // 2)) / (SHADES // 2) + 0.04
    is_coast = abs(h) / steep < 1.5
    if is_coast:
        color = blend(color, COAST, line)
    elif land:
        color = blend(color, tuple(c * CONTOUR for c in color), line)
    else:
        color = blend(color, (255, 255, 255), 0.35 * line)
    return tuple(max(0, min(255, round(c * shade))) for c in color)


def save(path, width, height, kind, rows, palette=b""):
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    body = zlib.compress(b"".join(b"\0" + bytes(row) for row in rows), 9)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, kind, 0, 0, 0)) +
                     (chunk(b"PLTE", palette) if palette else b"") + chunk(b"IDAT", body) + chunk(b"IEND", b""))


def make_island(path):
    field = heights()
    colors = [[color_at(field, x, y) for x in range(WIDTH)] for y in range(HEIGHT)]
    count = {}
    for row in colors:
        for color in row:
            count[color] = count.get(color, 0) + 1
    # The rare colours take the nearest of the common ones.
    common = sorted(count, key=count.get, reverse=True)[:256]
    index = {color: i for i, color in enumerate(common)}
    for color in count:
        if color not in index:
            index[color] = min(range(len(common)),
                               key=lambda i: sum((p - q) ** 2 for p, q in zip(common[i], color)))
    save(path, WIDTH, HEIGHT, 3, [[index[color] for color in row] for row in colors],
         bytes(part for color in common for part in color))


def make_compass(path):
    size, samples = 220, 3
    ink, pale = (34, 49, 79), (255, 255, 255)

    def sample(x, y):
        """The colour at a point, from -1 to 1 each way; None outside."""
        far = math.hypot(x, y)
        turn = math.atan2(x, -y)
        for points, offset, length in ((4, 0, 0.97), (4, math.pi / 4, 0.66)):
            step = 2 * math.pi / points
            nearest = round((turn - offset) / step) * step + offset
            along, across = far * math.cos(turn - nearest), far * math.sin(turn - nearest)
            if 0 <= along and abs(across) <= 0.21 * (length - along) * min(1, along / 0.17):
                north = abs(nearest) < 0.1 and length > 0.9
                return ((209, 73, 91) if north else ink) if across < 0 else pale
        if abs(far - 0.52) < 0.018 or abs(far - 0.60) < 0.008:
            return ink
        return None

    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            hits = [sample((px + (i + 0.5) / samples) * 2 / size - 1, (py + (j + 0.5) / samples) * 2 / size - 1)
                    for i in range(samples) for j in range(samples)]
            found = [hit for hit in hits if hit]
            row += [sum(hit[c] for hit in found) // len(found) if found else 0 for c in range(3)]
            row.append(255 * len(found) // len(hits))
        rows.append(row)
    save(path, size, size, 6, rows)


if __name__ == "__main__":
    folder = Path(__file__).parent
    make_island(folder / "island.png")
    make_compass(folder / "compass.png")
