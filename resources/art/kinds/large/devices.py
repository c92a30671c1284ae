# SPDX-License-Identifier: MIT
"""Drives, media, computers and the wastebasket, at 128 points."""
import math

from canvas import box, circle, dark, ellipse, light, polygon, Shade
from large.bases import drive, plate, shadow, text_lines, upper_edge
from large.glyphs import GLYPHS
import palette as p


def trash(canvas, full=False):
    colour = p.TIN
    if full:
        for sheet, shade in (
            ("M36 30L48 8 72 14 70 34H36z", p.PAPER),
            ("M62 34L70 12 94 20 92 36z", "#dfe6ee"),
            ("M44 32L60 18 78 32z", "#f4f7fa"),
        ):
            canvas.fill(sheet, p.PAPER_EDGE, rounding=4)
            canvas.fill(sheet, shade, rounding=1)
    shadow(canvas, "M28 40H100L93 112a8 8 0 0 1-8 8H43a8 8 0 0 1-8-8z")
    canvas.fill("M26 36H102L94 112a8 8 0 0 1-8 8H42a8 8 0 0 1-8-8z", dark(colour, 0.4))
    canvas.fill("M28 38H100L92.2 111a7 7 0 0 1-7 7H43a7 7 0 0 1-7-7z",
                Shade(light(colour, 0.3), dark(colour, 0.1), 38, 118))
    for x1, x2 in ((46, 49), (64, 64), (82, 79)):
        canvas.line(f"M{x1} 52L{x2} 106", dark(colour, 0.35), 6, 0.75)
    if full:
        canvas.fill(box(20, 30, 88, 12, 6), dark(colour, 0.4))
        canvas.fill(box(22, 32, 84, 8, 4), Shade(light(colour, 0.6), light(colour, 0.2), 32, 40))
        return
    canvas.line("M50 22V18a6 6 0 0 1 6-6H72a6 6 0 0 1 6 6V22", dark(colour, 0.4), 6)
    canvas.fill(box(20, 22, 88, 16, 6), dark(colour, 0.4))
    canvas.fill(box(22, 24, 84, 12, 4), Shade(light(colour, 0.6), light(colour, 0.15), 24, 36))


def full_trash(canvas):
    trash(canvas, True)


def hard_disk(canvas):
    drive(canvas)
    canvas.fill(ellipse(64, 48, 34, 17), dark(p.METAL, 0.18))
    canvas.fill(ellipse(64, 50, 33, 15), Shade("#ffffff", light(p.METAL_SHADE, 0.3), 36, 66))
    canvas.fill(ellipse(64, 49, 10, 5), p.METAL_EDGE)
    canvas.fill(box(20, 84, 40, 8, 4), dark(p.METAL_SHADE, 0.25))


def removable(canvas):
    drive(canvas, light(p.YELLOW, 0.3), p.YELLOW, dark(p.YELLOW, 0.45), "#ffffff")
    canvas.begin("translate(64 49) scale(1.1 .62)")
    GLYPHS["eject"].draw(canvas, dark(p.YELLOW, 0.5))
    canvas.end()
    canvas.fill(box(20, 84, 40, 8, 4), dark(p.YELLOW, 0.4))


def sector(x, y, inner, outer, start, end):
    """A part of a ring between two angles."""
    corners = (inner, start), (outer, start), (outer * 1.007, (start + end) / 2), (outer, end)
    return polygon(
        *((x + r * math.cos(a), y + r * math.sin(a)) for r, a in (*corners, (inner, end)))
    )


def disc_at(canvas, x, y, r):
    canvas.fill(circle(x, y, r), p.DISC_EDGE)
    shine = Shade(p.DISC, p.DISC_SHADE, y - r, y + r)
    canvas.fill(circle(x, y, r - 2) + circle(x, y, r * 0.16), shine)
    for index, colour in enumerate(("#8fd0e8", "#b6a3e6", "#f0b8d0")):
        for start in (-1.15 + index * 0.24, math.pi - 1.15 + index * 0.24):
            canvas.fill(sector(x, y, r * 0.38, r - 3, start, start + 0.24), colour, 0.75)
    canvas.fill(circle(x, y, r * 0.36) + circle(x, y, r * 0.16), p.DISC_HUB)
    canvas.line(circle(x, y, r * 0.36), p.DISC_RIM, 2, cap=None)
    canvas.line(circle(x, y, r * 0.16), p.DISC_EDGE, 2, cap=None)


def disc(canvas):
    shadow(canvas, circle(64, 64, 56))
    disc_at(canvas, 64, 64, 56)


def optical_drive(canvas):
    drive(canvas)
    canvas.begin("translate(64 48) scale(.62 .36)")
    disc_at(canvas, 0, 0, 56)
    canvas.end()
    canvas.fill(box(20, 86, 64, 4), dark(p.METAL_SHADE, 0.45))


def flash(canvas):
    card = "M28 16a8 8 0 0 1 8-8H80L104 32v80a8 8 0 0 1-8 8H36a8 8 0 0 1-8-8z"
    shadow(canvas, card)
    canvas.fill(card, p.NIGHT_EDGE)
    canvas.fill("M30 16a6 6 0 0 1 6-6H79.2L102 32.8V112a6 6 0 0 1-6 6H36a6 6 0 0 1-6-6z",
                Shade(light(p.NIGHT, 0.22), p.NIGHT, 10, 118))
    for x in (40, 52, 64, 76):
        canvas.fill(box(x, 16, 8, 20, 1), Shade(light(p.YELLOW, 0.35), p.YELLOW, 16, 36))
    canvas.fill(box(38, 56, 56, 52, 4), Shade(p.PAPER, p.PAPER_SHADE, 56, 108))
    canvas.fill(box(38, 56, 56, 12, 0), p.BLUE)
    text_lines(canvas, (80, 92), x=46, width=40)


def server(canvas):
    shadow(canvas, box(16, 12, 96, 104, 8))
    for y in (12, 48, 84):
        plate(canvas, 16, y, 96, 32, 6, light(p.SLATE, 0.35), p.SLATE, dark(p.SLATE, 0.4))
        upper_edge(canvas, 16, y, 96, 6, 0.3)
        canvas.fill(box(28, y + 12, 8, 8, 4), p.LAMP)
        canvas.fill(box(44, y + 12, 8, 8, 4), light(p.SLATE, 0.55))
        slots = "".join(box(x, y + 8, 4, 16) for x in (68, 80, 92))
        canvas.fill(slots, dark(p.SLATE, 0.5))


def screen(canvas, x, y, width, height, foot):
    shadow(canvas, box(x, y, width, height, 8))
    middle = x + width / 2
    low = y + height
    neck = Shade(p.METAL_EDGE, p.METAL_SHADE, low, low + foot)
    canvas.fill(box(middle - 12, low - 4, 24, foot + 4), neck)
    plate(canvas, middle - 28, low + foot - 4, 56, 10, 5, p.METAL, p.METAL_SHADE, p.METAL_EDGE)
    plate(canvas, x, y, width, height, 8, light(p.NIGHT, 0.15), dark(p.NIGHT, 0.3), p.NIGHT_EDGE)
    picture = Shade(p.SCREEN, p.SCREEN_SHADE, y + 8, low - 8)
    canvas.fill(box(x + 8, y + 8, width - 16, height - 16, 1), picture)


def computer(canvas):
    screen(canvas, 8, 12, 112, 80, 20)
    canvas.fill("M16 20H88L50 84H16z", "#ffffff", 0.12)


def workgroup(canvas):
    screen(canvas, 8, 12, 72, 52, 12)
    screen(canvas, 48, 48, 72, 52, 12)


DRAWINGS = {
    "user-trash": trash,
    "user-trash-full": full_trash,
    "drive-harddisk": hard_disk,
    "drive-removable-media": removable,
    "drive-optical": optical_drive,
    "media-optical": disc,
    "media-flash": flash,
    "network-server": server,
    "network-workgroup": workgroup,
    "computer": computer,
}
