# SPDX-License-Identifier: MIT
"""What the small kinds stand on, drawn on a grid of 16 x 16 that is fitted to whole pixels."""
import math

from canvas import box, circle, dark, light, number, polygon, Shade
from small import glyphs
import palette as p

GRID = 16
SLANT = 4  # the folded corner of a page


class Fitted:
    """A canvas on which edges are rounded to pixels, symmetrically around the centre."""

    def __init__(self, canvas):
        self.canvas, self.size = canvas, canvas.size
        self.scale = canvas.size / GRID

    def fit(self, value):
        offset = (value - GRID / 2) * self.scale
        return int(self.size / 2 + math.copysign(math.ceil(abs(offset) - 0.5), offset))

    def rect(self, x1, y1, x2, y2, colour, radius=0, opacity=1.0):
        self.pixels(*(self.fit(v) for v in (x1, y1, x2, y2)), colour, radius * self.scale, opacity)

    def pixels(self, x1, y1, x2, y2, colour, radius=0, opacity=1.0):
        self.canvas.fill(box(x1, y1, x2 - x1, y2 - y1, radius), colour, opacity)

    def row(self, x1, y, x2, colour, opacity=1.0):
        """One pixel high."""
        top = self.fit(y)
        self.pixels(self.fit(x1), top, self.fit(x2), top + 1, colour, 0, opacity)

    def shape(self, colour, *points):
        self.canvas.fill(polygon(*((self.fit(x), self.fit(y)) for x, y in points)), colour)

    def free(self, colour, *points):
        self.canvas.fill(polygon(*((x * self.scale, y * self.scale) for x, y in points)), colour)

    def disc(self, x, y, radius, colour, opacity=1.0):
        s = self.scale
        self.canvas.fill(circle(x * s, y * s, radius * s), colour, opacity)

    def inner_disc(self, colour):
        """Within an outline of one pixel."""
        middle = self.size / 2
        self.canvas.fill(circle(middle, middle, 7 * self.scale - 1), colour)

    def shade(self, top, bottom, y1, y2):
        return Shade(top, bottom, self.fit(y1), self.fit(y2))

    def plate(self, x1, y1, x2, y2, top, bottom, edge, radius=1):
        """A body with an outline of one pixel."""
        a, b, c, d = (self.fit(v) for v in (x1, y1, x2, y2))
        self.pixels(a, b, c, d, edge, radius * self.scale)
        self.pixels(a + 1, b + 1, c - 1, d - 1, Shade(top, bottom, b, d),
                    max(0, radius * self.scale - 1))

    def glyph(self, name, left, top, colour, ground, sizes=(6, 8)):
        """At a corner that is given in pixels for both sizes, as (at 16, at 24)."""
        index = 0 if self.size == GRID else 1
        corner = left[index], top[index]
        spot = glyphs.Spot(self.canvas, *corner, sizes[index], colour, ground)
        getattr(glyphs, name)(spot)


def pick(f, at16, at24):
    return at16 if f.size == GRID else at24


def folder_back(f, x1, x2, tab):
    a, b, top, low, s = f.fit(x1), f.fit(x2), f.fit(1), f.fit(14), number(f.scale)
    slope = f.fit(tab)
    f.canvas.fill(
        f"M{a} {top + f.scale:g}a{s} {s} 0 0 1 {s}-{s}H{slope}l2 2H{b - f.scale:g}"
        f"a{s} {s} 0 0 1 {s} {s}V{low - 2}H{a}z",
        Shade(p.FOLDER_BACK, p.FOLDER_EDGE, top, low),
    )


def folder(f):
    folder_back(f, 1, 15, tab=6)
    a, b, front, low, s = f.fit(1), f.fit(15), f.fit(4), f.fit(14), f.scale
    f.pixels(a, front, b, low, p.FOLDER_EDGE, s)
    f.pixels(a, front, b, low - 1, Shade(p.FOLDER_TOP, p.FOLDER, front, low), s)
    f.pixels(a + 1, front, b - 1, front + 1, "#ffffff", 0, 0.45)


def open_folder(f):
    folder_back(f, 2, 14, tab=7)
    a, b, front, low = f.fit(2), f.fit(14), f.fit(6), f.fit(14)
    f.pixels(a + 1, f.fit(4), b - 1, low - 2, p.PAPER)
    for y, colour in ((0, p.FOLDER_EDGE), (1, Shade(p.FOLDER_TOP, p.FOLDER, front, low))):
        path = f"M{f.fit(0.6)} {front}H{f.fit(15.4)}L{b} {low - y}H{a}z"
        f.canvas.fill(path, colour)
    f.pixels(f.fit(0.6) + 1, front, f.fit(15.4) - 1, front + 1, "#ffffff", 0, 0.45)


def page(f, fold=p.PALE, top=p.PAPER, bottom=p.PAPER_SHADE, edge=p.PAPER_EDGE):
    a, b, c, d = f.fit(3), f.fit(1), f.fit(13), f.fit(15)
    n = round(SLANT * f.scale)
    f.canvas.fill(polygon((a, b), (c - n, b), (c, b + n), (c, d), (a, d)), edge)
    f.canvas.fill(
        polygon((a + 1, b + 1), (c - n, b + 1), (c - 1, b + n), (c - 1, d - 1), (a + 1, d - 1)),
        Shade(top, bottom, b, d))
    f.canvas.fill(polygon((c - n, b), (c, b + n), (c - n, b + n)), dark(fold, 0.15))
    flap = polygon((c - n, b + 1), (c - 1, b + n - 0.6), (c - n, b + n - 1))
    f.canvas.fill(flap, light(fold, 0.35))


def page_with(name, colour, **paper):
    def draw(f):
        page(f, **paper)
        f.glyph(name, (5, 8), (7, 11), colour, p.PAPER)

    return draw


def rows(f, ys, x1=5, x2=11, colour=p.GREY, last=None):
    """Lines of text at the given pixels."""
    for y in ys:
        right = f.fit(last if last and y == ys[-1] else x2)
        f.pixels(f.fit(x1), y, right, y + 1, colour)


def tile(f, colour):
    f.plate(2, 2, 14, 14, light(colour, 0.14), dark(colour, 0.16), dark(colour, 0.38), 2)


def on_tile(name, colour, sizes=(6, 8)):
    def draw(f):
        tile(f, colour)
        start = [(size - glyph) // 2 for size, glyph in zip((16, 24), sizes)]
        f.glyph(name, start, start, "#ffffff", colour, sizes)

    return draw
