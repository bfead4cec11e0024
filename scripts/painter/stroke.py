"""The geometry of one stroke as src/platform/raster computes it, in the same integers, for the
pictures of docs/painter.md. Lengths are pixels; names are those of the C++ code."""

import math
from dataclasses import dataclass

UNIT = 256          # kHalfPlaneUnit
ON_EDGE = UNIT // 2  # kOnEdge
FRINGE = 0.8
SHARP_TURN = 1      # 1 + cos(turn)
MITRE_LIMIT_TURN = 2 / 10 ** 2
CELL_ROWS = 16
GROUP = 8


@dataclass
class HalfPlane:
    a: int
    b: int
    c: int

    def at(self, x, y):
        return self.a * x + self.b * y + self.c


def scale_of(x, y):
    return UNIT / max(abs(x), abs(y))


def half_plane(point, direction, offset=ON_EDGE):
    """The half-plane whose value is `offset` at the point and which grows along the direction."""
    scale = scale_of(*direction)
    a, b = round(direction[0] * scale), round(direction[1] * scale)
    return HalfPlane(a, b, offset - round(a * point[0] + b * point[1]))


def clamp(value):
    return min(max(value, 0), 255)


def average(a, b):
    return (a + b + 1) >> 1


def product(a, b):
    return (257 * a * 257 * b >> 16) >> 8


class Ramps:
    def __init__(self, half_width, tangent):
        x, y = abs(tangent[0]), abs(tangent[1])
        scale = scale_of(x, y)
        edge = half_width * scale + ON_EDGE - 1
        quarter = min(x, y) * scale / 4
        self.outer, self.inner = round(edge + quarter), round(edge - quarter)

    def coverage(self, distance):
        distance = abs(distance)
        return average(clamp(self.outer - distance), clamp(self.inner - distance))


@dataclass
class Piece:
    """A part of the stroke: within all strips, past `start` and before `end`. `strips` are pairs of a
    distance, as a function of a pixel, and its ramps."""
    strips: list
    start: HalfPlane
    end: HalfPlane
    box: tuple

    def strip_coverage(self, x, y):
        return min(ramps.coverage(distance(x, y)) for distance, ramps in self.strips)

    def coverage(self, x, y):
        left, top, right, bottom = self.box
        if not (left <= x <= right and top <= y <= bottom):
            return 0
        between = max(0, clamp(self.start.at(x, y)) - clamp(self.end.at(x, y)))
        return product(self.strip_coverage(x, y), between)


def box_of(points):
    xs, ys = [p[0] for p in points], [p[1] for p in points]
    return min(xs) - FRINGE, min(ys) - FRINGE, max(xs) + FRINGE, max(ys) + FRINGE


def cell_distance(point, tangent):
    """A strip's distance, exact in the middle of every cell."""
    scale = scale_of(*tangent)
    a, b = -tangent[1] * scale, tangent[0] * scale
    c = -(a * point[0] + b * point[1])

    def distance(x, y):
        middle_x = x // GROUP * GROUP + GROUP // 2
        middle_y = y // CELL_ROWS * CELL_ROWS + CELL_ROWS // 2
        middle = math.floor(a * middle_x + b * middle_y + c + 0.5)
        return middle + round(a) * (x - middle_x) + round(b) * (y - middle_y)
    return distance


class Stroke:
    """An open line, its segments longer than the pen is wide and short enough for lanes."""

    def __init__(self, points, width):
        self.points, self.half_width = points, width / 2
        before = [2 * points[0][i] - points[1][i] for i in (0, 1)]
        after = [2 * points[-1][i] - points[-2][i] for i in (0, 1)]
        self.context = [tuple(before), *points, tuple(after)]
        self.tangents = []
        for p, q in zip(self.context, self.context[1:]):
            length = math.dist(p, q)
            self.tangents.append(((q[0] - p[0]) / length, (q[1] - p[1]) / length))
        self.joints = [self._joint(i) for i in range(len(points))]
        self.pieces = [self._segment(i) for i in range(len(points) - 1)]
        self.corners = [piece for i, joint in enumerate(self.joints) if not joint["seamed"]
                        for piece in self._corner(i)]

    def _joint(self, i):
        (x0, y0), (x1, y1) = self.tangents[i:i + 2]
        one_plus_cos = 1 + x0 * x1 + y0 * y1
        seamed = one_plus_cos >= SHARP_TURN
        joint = {"seamed": seamed, "one_plus_cos": one_plus_cos}
        if seamed:
            joint["normal"] = x0 + x1, y0 + y1
            joint["seam"] = half_plane(self.points[i], joint["normal"])
        return joint

    def _end(self, point, segment):
        joint = self.joints[point]
        return joint["seam"] if joint["seamed"] else half_plane(self.points[point],
                                                                self.tangents[segment + 1])

    def _segment(self, i):
        tangent = self.tangents[i + 1]
        normal = -tangent[1], tangent[0]
        p, q = self.points[i], self.points[i + 1]
        middle = (p[0] + q[0]) / 2, (p[1] + q[1]) / 2
        strip = half_plane(middle, normal, 0)
        return Piece([(strip.at, Ramps(self.half_width, tangent))], self._end(i, i),
                     self._end(i + 1, i), self._box(i))

    def _box(self, i):
        corners = []
        tangent = self.tangents[i + 1]
        for point in (i, i + 1):
            x, y = self.points[point]
            joint = self.joints[point]
            if joint["seamed"]:
                share = self.half_width / joint["one_plus_cos"]
                fringe = 2 * FRINGE / joint["one_plus_cos"] - FRINGE
                reach = [share * abs(joint["normal"][k]) + fringe for k in (1, 0)]
            else:
                reach = [self.half_width * abs(tangent[k]) for k in (1, 0)]
            corners += [(x - reach[0], y - reach[1]), (x + reach[0], y + reach[1])]
        return box_of(corners)

    def outer_ends(self, i):
        """From a joint to the outer ends of its two flat ends."""
        (x0, y0), (x1, y1) = self.tangents[i:i + 2]
        outer = -self.half_width if x0 * y1 - y0 * x1 > 0 else self.half_width
        return (-outer * y0, outer * x0), (-outer * y1, outer * x1)

    def _corner(self, i):
        """The corner of a sharp turn: the triangle at the joint, and the tip unless it is too long."""
        at = self.points[i]
        turn = self.joints[i]["one_plus_cos"]
        before, after = self.tangents[i:i + 2]
        e0, e1 = self.outer_ends(i)
        across = e0[0] + e1[0], e0[1] + e1[1]
        length = math.hypot(*across)
        outward = across[0] / length, across[1] / length
        along = outward[1], -outward[0]
        height = self.half_width * math.sqrt(turn / 2)
        ends = [(at[0] + e[0], at[1] + e[1]) for e in (e0, e1)]
        corner = [Piece([(cell_distance(at, along), Ramps(height, along))], half_plane(at, before),
                        half_plane(at, after), box_of([at, *ends]))]
        if turn >= MITRE_LIMIT_TURN:
            tip = at[0] + across[0] / turn, at[1] + across[1] / turn
            beyond = (length / turn - height) / 2 + 1
            middle = [at[k] + (height + beyond) * outward[k] for k in (0, 1)]
            corner.append(Piece([(cell_distance(middle, along), Ramps(beyond, along))],
                                half_plane(ends[0], (-e0[0], -e0[1])), half_plane(ends[1], e1),
                                box_of([*ends, tip])))
        return corner

    def coverage(self, x, y):
        return min(255, sum(piece.coverage(x, y) for piece in self.pieces + self.corners))
