"""A few shapes as SVG, in pixels of the page that a picture shows."""

INK = "#1b2a41"
GRID = "#d5d9e0"
RED = "#c8332b"
BLUE = "#2f6fb5"
GREEN = "#2e8b57"
AMBER = "#e0a526"


def number(value):
    return f"{value:.2f}".rstrip("0").rstrip(".")


class Picture:
    """`unit`: how large a pixel is shown; integer coordinates name the centres of pixels."""

    def __init__(self, width, height, unit):
        self.width, self.height, self.unit = width, height, unit
        self.shapes = []

    def _at(self, value):
        return number((value + 0.5) * self.unit)

    def rect(self, left, top, width, height, fill="none", stroke="none", thick=1, opacity=1):
        """The pixels left .. left+width-1, top .. top+height-1."""
        self.shapes.append(
            f'<rect x="{number(left * self.unit)}" y="{number(top * self.unit)}" '
            f'width="{number(width * self.unit)}" height="{number(height * self.unit)}" '
            f'fill="{fill}" stroke="{stroke}" stroke-width="{thick}" fill-opacity="{number(opacity)}"/>')

    def cells(self, shares, color):
        """Fills the pixels (x, y) of `shares` by their shares of 1."""
        paths = {}
        for (x, y), share in shares.items():
            u = number(self.unit)
            cell = f"M{number(x * self.unit)} {number(y * self.unit)}h{u}v{u}h-{u}z"
            opacity = number(share)
            paths[opacity] = paths.get(opacity, "") + cell
        for opacity, path in sorted(paths.items()):
            if opacity != "0":
                self.shapes.append(f'<path d="{path}" fill="{color}" fill-opacity="{opacity}"/>')

    def grid(self, step, color=GRID, thick=1, left=0, top=0, width=None, height=None):
        width, height = width or self.width - left, height or self.height - top
        u = self.unit
        path = "".join(f"M{number((left + x) * u)} {number(top * u)}v{number(height * u)}"
                       for x in range(0, width + 1, step))
        path += "".join(f"M{number(left * u)} {number((top + y) * u)}h{number(width * u)}"
                        for y in range(0, height + 1, step))
        self.shapes.append(f'<path d="{path}" stroke="{color}" stroke-width="{thick}" fill="none"/>')

    def line(self, points, color=INK, thick=2, dash="", closed=False, fill="none", opacity=1):
        path = "L".join(f"{self._at(x)} {self._at(y)}" for x, y in points)
        dashes = f' stroke-dasharray="{dash}"' if dash else ""
        self.shapes.append(f'<path d="M{path}{"Z" if closed else ""}" stroke="{color}" '
                           f'stroke-width="{thick}" stroke-linecap="butt" fill="{fill}" '
                           f'fill-opacity="{number(opacity)}"{dashes}/>')

    def dot(self, x, y, color=INK, radius=4):
        self.shapes.append(f'<circle cx="{self._at(x)}" cy="{self._at(y)}" r="{radius}" '
                           f'fill="{color}" stroke="{color}" stroke-width="1.5"/>')

    def text(self, x, y, text, color=INK, size=13, anchor="start"):
        self.shapes.append(f'<text x="{self._at(x)}" y="{self._at(y)}" fill="{color}" '
                           f'font-size="{size}" text-anchor="{anchor}">{text}</text>')

    def write(self, path):
        width, height = number(self.width * self.unit), number(self.height * self.unit)
        path.write_text(
            f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
            f'viewBox="0 0 {width} {height}" font-family="sans-serif">\n'
            f'<rect width="{width}" height="{height}" fill="white"/>\n'
            + "\n".join(self.shapes) + "\n</svg>\n")
