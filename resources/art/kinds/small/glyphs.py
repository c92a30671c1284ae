# SPDX-License-Identifier: MIT
"""What stands on small folders, pages and tiles: shapes on a grid of 6 x 6, whose straight edges
end at whole pixels in every size."""
import math

from canvas import circle, polygon


class Spot:
    """Where a glyph is drawn: in a square of `size` pixels at (x, y)."""

    def __init__(self, canvas, x, y, size, colour, ground):
        self.canvas, self.x, self.y = canvas, x, y
        self.scale = size / 6
        self.colour, self.ground = colour, ground

    def at(self, x, y):
        return self.x + x * self.scale, self.y + y * self.scale

    def rect(self, x1, y1, x2, y2, cut=False):
        left, top = (round(v) for v in self.at(x1, y1))
        right, bottom = (round(v) for v in self.at(x2, y2))
        self.fill(polygon((left, top), (right, top), (right, bottom), (left, bottom)), cut)

    def shape(self, *points, cut=False):
        self.fill(polygon(*(self.at(*point) for point in points)), cut)

    def disc(self, x, y, radius, cut=False):
        self.fill(circle(*self.at(x, y), radius * self.scale), cut)

    def stroke(self, width, *points):
        path = "M" + "L".join("{:.2f} {:.2f}".format(*self.at(*point)) for point in points)
        self.canvas.line(path, self.colour, width * self.scale)

    def fill(self, path, cut):
        self.canvas.fill(path, self.ground if cut else self.colour)


def documents(s):
    s.shape((1, 0), (3, 0), (5, 2), (5, 6), (1, 6))
    s.rect(2, 4, 4, 5, cut=True)


def download(s):
    s.rect(2, 0, 4, 2)
    s.shape((0.3, 1.8), (5.7, 1.8), (3, 4.5))
    s.rect(0, 5, 6, 6)


def music(s):
    s.rect(2, 0, 6, 1)
    s.rect(2, 0, 3, 5)
    s.rect(5, 0, 6, 4)
    s.disc(1.7, 4.8, 1.2)
    s.disc(4.7, 4, 1.2)


def pictures(s):
    s.shape((0, 6), (0, 5), (2, 2), (3.6, 4.4), (4.4, 3.5), (6, 5.2), (6, 6))
    s.disc(4.8, 1, 1)


def videos(s):
    s.rect(0, 0, 6, 6)
    s.shape((2, 1), (5, 3), (2, 5), cut=True)


def share(s):
    s.stroke(0.7, (5, 1), (1.1, 3), (5, 5))
    for x, y in ((1.2, 3), (4.8, 1.1), (4.8, 4.9)):
        s.disc(x, y, 1.2)


def template(s):
    for x in (0, 4):
        for y in (0, 4):
            s.rect(x, 0 if y == 0 else 5, x + 2, 1 if y == 0 else 6)
            s.rect(0 if x == 0 else 5, y, 1 if x == 0 else 6, y + 2)
    s.rect(2, 2, 4, 4)


def globe(s):
    s.disc(3, 3, 3)
    s.shape((1.2, 1.8), (2.9, 0.6), (3.6, 1.6), (2.6, 2.6), (2.4, 3.8), (1, 3), cut=True)
    s.shape((4, 2.8), (5.4, 2.6), (4.8, 4.4), (3.6, 5.2), (3.4, 3.8), cut=True)


def home(s):
    s.shape((3, -0.6), (6.8, 3.2), (-0.8, 3.2))
    s.rect(0, 3, 6, 6)
    s.rect(2, 4, 4, 6, cut=True)


def desktop(s):
    s.rect(0, 0, 6, 4)
    s.rect(1, 1, 5, 3, cut=True)
    s.rect(2, 4, 4, 5)
    s.rect(1, 5, 5, 6)


def recent(s):
    s.disc(3, 3, 3)
    s.rect(2, 1, 3, 4, cut=True)
    s.rect(2, 3, 5, 4, cut=True)


def star(s):
    points = []
    for index in range(10):
        radius = 1.4 if index % 2 else 3.2
        angle = math.pi * (index / 5 - 0.5)
        points.append((3 + radius * math.cos(angle), 3.2 + radius * math.sin(angle)))
    s.shape(*points)


def locked(s):
    s.rect(1, 0, 5, 3)
    s.rect(2, 1, 4, 3, cut=True)
    s.rect(0, 3, 6, 6)


def applications(s):
    for x in (0, 4):
        for y in (0, 4):
            s.rect(x, y, x + 2, y + 2)


def letter(s):
    if s.scale == 1:  # by the pixel
        s.rect(2, 0, 4, 2)
        s.rect(1, 3, 5, 4)
        for x in (0, 5):
            s.rect(x, 4, x + 1, 6)
        for x in (1, 4):
            s.rect(x, 2, x + 1, 4)
        return
    s.shape((2.2, 0), (3.8, 0), (6, 6), (4.5, 6), (4, 4.6), (2, 4.6), (1.5, 6), (0, 6))
    s.shape((3, 1.6), (3.6, 3.5), (2.4, 3.5), cut=True)


def gear(s):
    s.rect(2, 0, 4, 6)
    s.rect(0, 2, 6, 4)
    s.disc(3, 3, 2.3 if s.scale > 1 else 2)
    for x in (1.1, 4.9) if s.scale > 1 else ():
        for y in (1.1, 4.9):
            s.disc(x, y, 0.6)
    s.disc(3, 3, 0.95, cut=True)


def plus(s):
    s.rect(2, 0, 4, 6)
    s.rect(0, 2, 6, 4)


def prompt(s):
    s.stroke(0.9, (0.5, 0.8), (2.6, 3), (0.5, 5.2))
    s.rect(3, 5, 6, 6)


def markup(s):
    s.stroke(0.9, (2, 1), (0, 3), (2, 5))
    s.stroke(0.9, (4, 1), (6, 3), (4, 5))
    if s.scale > 1:
        s.stroke(0.6, (3.4, 0.8), (2.6, 5.2))


def window(s):
    s.rect(0, 0, 6, 6)
    s.rect(1, 2, 5, 5, cut=True)


def question(s):
    s.rect(1, 0, 5, 1)
    s.rect(0, 1, 2, 2)
    s.rect(4, 1, 6, 2)
    s.rect(3, 2, 5, 3)
    s.rect(2, 3, 4, 4)
    s.rect(2, 5, 4, 6)


def pipe(s):
    s.rect(0, 0, 0.75, 6)
    s.rect(5.25, 0, 6, 6)
    s.rect(1.5, 2.25, 3, 3.75)
    s.shape((2.9, 1), (5, 3), (2.9, 5))


def plug(s):
    s.rect(1, 0, 2, 2)
    s.rect(4, 0, 5, 2)
    s.rect(0, 2, 6, 3)
    s.rect(1, 3, 5, 4)
    s.rect(2, 4, 4, 6)


def signal(s):
    for x1, y1, x2, y2 in ((0, 5, 2, 6), (1, 0, 2, 6), (1, 0, 5, 1), (4, 0, 5, 6), (4, 5, 6, 6)):
        s.rect(x1, y1, x2, y2)


def blocks(s):
    side = 2 / s.scale  # two pixels
    for x in (0, 3 - side / 2, 6 - side):
        for y in (0, 3 - side / 2, 6 - side):
            if y > 0 or x < 6 - side:
                s.rect(x, y, x + side, y + side)


def exclamation(s):
    s.rect(2, 0, 4, 4)
    s.rect(2, 5, 4, 6)


def info(s):
    s.rect(2, 0, 4, 1)
    s.rect(2, 2, 4, 6)


def cross(s):
    s.stroke(1.3, (0.8, 0.8), (5.2, 5.2))
    s.stroke(1.3, (5.2, 0.8), (0.8, 5.2))


def check(s):
    s.stroke(1.2, (0.5, 3.2), (2.2, 5), (5.6, 1.2))


def left(s):
    s.stroke(1.2, (4.2, 0.4), (1.6, 3), (4.2, 5.6))


def right(s):
    s.stroke(1.2, (1.8, 0.4), (4.4, 3), (1.8, 5.6))


def eject(s):
    s.shape((3, 0), (6.2, 3.6), (-0.2, 3.6))
    s.rect(0, 5, 6, 6)


def arrow(s):
    s.shape((0, 6), (0.2, 3.6), (1.6, 2), (3.2, 1.7), (3.2, 0), (6.3, 2.8), (3.2, 5.4), (3.2, 3.8),
            (1.4, 4.2))


def person(s):
    s.disc(3, 1.6, 1.6)
    s.shape((0.2, 6), (0.4, 4.6), (1.6, 3.7), (4.4, 3.7), (5.6, 4.6), (5.8, 6))
