# SPDX-License-Identifier: MIT
"""What stands on folders, pages and tiles: paths in a square of 48 units around the origin."""
from canvas import box, circle, ellipse, polygon, ring


class Glyph:
    """Filled areas and lines of one colour."""

    def __init__(self, *fills, lines=(), rounding=0):
        self.fills = fills
        self.lines = lines
        self.rounding = rounding

    def draw(self, canvas, colour, opacity=1.0):
        for path in self.fills:
            canvas.fill(path, colour, opacity, self.rounding)
        for path, width, *dashes in self.lines:
            canvas.line(path, colour, width, opacity, *dashes)


def gear(teeth=8, outer=22, root=16, hole=7):
    import math

    step = 2 * math.pi / teeth
    points = []
    for tooth in range(teeth):
        for radius, part in ((root, -0.3), (outer, -0.17), (outer, 0.17), (root, 0.3)):
            angle = step * (tooth + part) - math.pi / 2
            points.append((radius * math.cos(angle), radius * math.sin(angle)))
    return polygon(*points) + circle(0, 0, hole)


PERSON = circle(0, -11, 10) + "M-20 22V18C-20 8-11 3 0 3S20 8 20 18V22z"

GLYPHS = {
    "documents": Glyph(
        "M-13-22H5L17-10V19a3 3 0 0 1-3 3H-13a3 3 0 0 1-3-3V-19a3 3 0 0 1 3-3z"
        "M-9-3H10v4H-9zM-9 5H10v4H-9zM-9 13H4v4H-9zM-9-11H0v4H-9z"
    ),
    "download": Glyph("M-5-22H5V-6H16L0 11-16-6H-5z", lines=[("M-20 8V20H20V8", 6)]),
    "music": Glyph(
        ellipse(-12, 16, 9, 7),
        ellipse(13, 11, 9, 7),
        "M-8-14L22-22V11H17V-9L-3-4V16H-8z",
    ),
    "pictures": Glyph(
        box(-23, -18, 46, 36, 4) + box(-18, -13, 36, 26, 1),
        polygon((-16, 11), (-6, -4), (1, 5), (6, -1), (16, 11)),
        circle(9, -6, 4),
    ),
    "videos": Glyph(
        box(-23, -18, 46, 36, 4)
        + "".join(box(x, y, 5, 5) for x in (-20, -11, -2.5, 6, 15) for y in (-15.5, 10.5))
        + polygon((-6, -7), (8, 0), (-6, 7))
    ),
    "share": Glyph(
        circle(-14, 0, 8), circle(13, -14, 8), circle(13, 14, 8), lines=[("M13-14L-14 0 13 14", 4)]
    ),
    "template": Glyph(
        lines=[("M-16-22H6L16-12V22H-16z", 4, "7 5"), ("M-7-4H7M-7 4H7M-7 12H2", 4)]
    ),
    "globe": Glyph(
        lines=[(circle(0, 0, 20), 4), (ellipse(0, 0, 9, 20), 4), ("M-20 0H20", 4),
               ("M-17-10H17M-17 10H17", 3)]
    ),
    "home": Glyph("M0-21L22 0H16V20H5V7H-5V20H-16V0H-22z", rounding=3),
    "desktop": Glyph(
        box(-23, -20, 46, 32, 4) + box(-18, -15, 36, 22, 1), "M-6 12H6L8 18H13V22H-13V18H-8z"
    ),
    "recent": Glyph(lines=[(circle(0, 0, 20), 5), ("M0-12V1L9 7", 5)]),
    "favorites": Glyph(polygon(*((x, y + 2) for x, y in ring(5, 23, 10))), rounding=3),
    "locked": Glyph(
        box(-16, -3, 32, 25, 4) + "M-4 6a4 4 0 1 1 6 3.5V15H-2V9.5a4 4 0 0 1-2-3.5z",
        lines=[("M-10-3V-10a10 10 0 0 1 20 0V-3", 5)],
    ),
    "applications": Glyph(
        *(box(x, y, 17, 17, 4) for x, y in ((-20, -20), (3, -20), (-20, 3))),
        circle(11.5, 11.5, 8.5),
    ),
    "letter": Glyph(
        "M-4-21H5L19 16H24V21H4V16H9L6 8H-9L-12 16H-7V21H-24V16H-18zM-7 3H4L-1-12z"
    ),
    "gear": Glyph(gear(), rounding=2),
    "plus": Glyph(lines=[("M-16 0H16M0-16V16", 9)]),
    "prompt": Glyph(lines=[("M-17-13L-4 0-17 13", 7), ("M3 14H18", 7)]),
    "markup": Glyph(lines=[("M-11-11L-22 0-11 11M11-11L22 0 11 11M4-17L-4 17", 6)]),
    "window": Glyph(
        box(-23, -19, 46, 38, 5) + box(-18, -9, 36, 23, 1)
        + "".join(circle(x, -14, 2) for x in (-17, -11)),
    ),
    "puzzle": Glyph(
        "M-20-8H-10a8 8 0 1 1 13 0H12V2a8 8 0 1 1 0 13V22H-20V14a7 7 0 1 0 0-13z", rounding=2
    ),
    "question": Glyph(
        circle(0, 19, 5), lines=[("M-12-10a12 11 0 1 1 17 10C1 2 0 4 0 8", 7)]
    ),
    "person": Glyph(PERSON),
    "pipe": Glyph(
        box(-23, -17, 9, 34, 3),
        box(14, -17, 9, 34, 3),
        "M-14-13H14V13H-14zM-10-3V3H0V9L10 0 0-9V-3z"
    ),
    "plug": Glyph(
        box(-14, -8, 28, 8, 2), "M-11 2H11V5C11 13 5 16 3 16V24H-3V16C-5 16-11 13-11 5z",
        box(-9, -23, 5, 14, 2), box(4, -23, 5, 14, 2),
    ),
    "signal": Glyph(lines=[("M-23 15H-11V-15H11V15H23", 6)]),
    "blocks": Glyph(
        *(box(x, y, 12, 12, 2) for x in (-22, -6, 10) for y in (-22, -6, 10) if (x, y) != (10, -22))
    ),
    "eject": Glyph(polygon((0, -16), (18, 5), (-18, 5)), box(-18, 12, 36, 7, 1), rounding=2),
    "check": Glyph(lines=[("M-17 1L-5 13 18-12", 8)]),
    "exclamation": Glyph("M-5-22H5L3 6H-3z", circle(0, 17, 5.5), rounding=2),
    "info": Glyph(circle(0, -17, 5.5), "M-5-7H5V22H-5z", rounding=1),
    "cross": Glyph(lines=[("M-13-13L13 13M13-13L-13 13", 8)]),
    "chain": Glyph(
        lines=[("M-7-8H-15a8 8 0 0 0 0 16H-7M7-8H15a8 8 0 0 1 0 16H7", 6)]
    ),
    "unlocked": Glyph(
        box(-16, -3, 32, 25, 4) + "M-4 6a4 4 0 1 1 6 3.5V15H-2V9.5a4 4 0 0 1-2-3.5z",
        lines=[("M-10-3V-14a10 10 0 0 1 19-4", 5)],
    ),
    "left": Glyph(lines=[("M10-20L-10 0 10 20", 9)]),
    "right": Glyph(lines=[("M-10-20L10 0-10 20", 9)]),
    "arrow": Glyph("M-20 20C-20 0-8-8 4-8V-18L22-2 4 14V4C-6 4-14 8-20 20z", rounding=2),
}
