# SPDX-License-Identifier: MIT
"""Drives, media, computers and the wastebasket, at 16 and 24 points."""
from canvas import dark, ellipse, light, polygon, Shade
from small.bases import pick
import palette as p


def trash(f, full=False):
    colour = p.TIN
    if full:
        f.free(p.PAPER_EDGE, (3.5, 5), (6, 1), (12.6, 1.6), (12, 5))
        f.free(p.PAPER, (4.6, 5), (6.6, 1.9), (11.6, 2.4), (11.2, 5))
    else:
        f.rect(6, 1, 10, 2, dark(colour, 0.4))
        for x in (6, 9):
            f.rect(x, 1, x + 1, 3, dark(colour, 0.4))
    f.shape(dark(colour, 0.4), (3, 4), (13, 4), (12, 15), (4, 15))
    top, low = f.fit(4), f.fit(15) - 1
    f.canvas.fill(
        polygon(
            (f.fit(3) + 1, top), (f.fit(13) - 1, top), (f.fit(12) - 1, low), (f.fit(4) + 1, low)
        ),
        f.shade(light(colour, 0.3), dark(colour, 0.1), 4, 15),
    )
    f.plate(2, 3, 14, 6, light(colour, 0.6), light(colour, 0.2), dark(colour, 0.4))
    for x in (6, 9):
        f.rect(x, 8, x + 1, 13, dark(colour, 0.3))


def drive(f, top=p.METAL, front=p.METAL_SHADE, edge=p.METAL_EDGE, lamp=p.GREEN):
    f.shape(edge, (4, 2), (12, 2), (15, 9), (15, 10), (1, 10), (1, 9))
    a, b, c, d = f.fit(4), f.fit(2), f.fit(12), f.fit(9)
    f.canvas.fill(polygon((a + .4, b + 1), (c - .4, b + 1), (f.fit(15) - 1, d), (f.fit(1) + 1, d)),
                  f.shade(light(top, 0.5), dark(top, 0.08), 2, 9))
    f.plate(1, 9, 15, 14, light(front, 0.35), front, edge)
    f.rect(12, 11, 13, 12, lamp)


def flat_disc(f, x, y, rx, ry, colour):
    f.canvas.fill(ellipse(x * f.scale, y * f.scale, rx * f.scale, ry * f.scale), colour)


def hard_disk(f):
    drive(f)
    flat_disc(f, 8, 5.9, 3.9, 1.9, dark(p.METAL, 0.25))
    flat_disc(f, 8, 6.1, 1.2, 0.6, p.METAL_EDGE)
    f.rect(3, 11, 7, 12, dark(p.METAL_SHADE, 0.35))


def removable(f):
    drive(f, light(p.YELLOW, 0.3), p.YELLOW, dark(p.YELLOW, 0.45), "#ffffff")
    f.free(dark(p.YELLOW, 0.5), (8, 3.4), (10.8, 6), (5.2, 6))
    f.row(5, 7, 11, dark(p.YELLOW, 0.5))
    f.rect(3, 11, 7, 12, dark(p.YELLOW, 0.4))


def optical_drive(f):
    drive(f)
    flat_disc(f, 8, 5.9, 4.4, 2.3, "#7c96b2")
    flat_disc(f, 8, 6, 1.3, 0.7, "#ffffff")
    f.rect(3, 11, 10, 12, dark(p.METAL_SHADE, 0.45))


def disc(f):
    f.disc(8, 8, 7, p.DISC_EDGE)
    f.inner_disc(f.shade(p.DISC, p.DISC_SHADE, 1, 15))
    for sign in (1, -1):
        ray = (1.2, -2), (2.4, -5.4), (4.2, -4.2), (2, -1.2)
        f.free("#a9c9ee", *((8 + sign * x, 8 + sign * y) for x, y in ray))
    f.disc(8, 8, 2.4, p.DISC_RIM)
    f.disc(8, 8, 1.1, "#ffffff")


def flash(f):
    f.shape(p.NIGHT_EDGE, (3, 1), (10, 1), (13, 4), (13, 15), (3, 15))
    a, b, c, d = f.fit(3), f.fit(1), f.fit(13), f.fit(15)
    slope = (f.fit(10), b + 1), (c - 1, f.fit(4))
    f.canvas.fill(polygon((a + 1, b + 1), *slope, (c - 1, d - 1), (a + 1, d - 1)),
                  f.shade(light(p.NIGHT, 0.22), p.NIGHT, 1, 15))
    for x in (5, 7, 9):
        f.rect(x, 2, x + 1, 5, light(p.YELLOW, 0.15))
    f.rect(5, 7, 11, 14, p.PAPER)
    f.rect(5, 7, 11, 9, p.BLUE)


def server(f):
    for y in (1, 6, 11):
        f.plate(2, y, 14, y + 4, light(p.SLATE, 0.35), p.SLATE, p.NIGHT_EDGE)
        top = f.fit(y) + pick(f, 1, 2)
        height = pick(f, 2, 2)
        f.pixels(f.fit(4), top, f.fit(4) + 2, top + height, p.LAMP)
        f.pixels(f.fit(8), top, f.fit(12), top + height, dark(p.SLATE, 0.4))


def screen(f, x1, y1, x2, y2, foot=2):
    f.plate(x1, y1, x2, y2, light(p.NIGHT, 0.1), dark(p.NIGHT, 0.3), p.NIGHT_EDGE)
    a, b, c, d = (f.fit(v) for v in (x1, y1, x2, y2))
    f.pixels(a + 1, b + 1, c - 1, d - 1, Shade(p.SCREEN, p.SCREEN_SHADE, b, d))
    middle = (x1 + x2) / 2
    low = f.fit(y2 + foot)
    f.pixels(f.fit(middle - 1), d, f.fit(middle + 1), low, p.METAL_EDGE)
    f.pixels(f.fit(middle - 3), low - 1, f.fit(middle + 3), low, p.METAL_EDGE)


def computer(f):
    screen(f, 1, 2, 15, 12)


def workgroup(f):
    screen(f, 1, 1, 9, 7, 1)
    screen(f, 6, 7, 15, 13, 1)


DRAWINGS = {
    "user-trash": trash,
    "user-trash-full": lambda f: trash(f, True),
    "drive-harddisk": hard_disk,
    "drive-removable-media": removable,
    "drive-optical": optical_drive,
    "media-optical": disc,
    "media-flash": flash,
    "network-server": server,
    "network-workgroup": workgroup,
    "computer": computer,
}
