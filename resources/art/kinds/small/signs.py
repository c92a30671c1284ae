# SPDX-License-Identifier: MIT
"""Programs, special files, people and signs, at 16 and 24 points."""
from canvas import circle, dark, light, polygon
from small.bases import on_tile, pick, rows, tile
import palette as p


def addon(f):
    colour = f.shade(light(p.GREEN, 0.2), p.GREEN, 1, 15)
    for shade, grow in ((dark(p.GREEN, 0.4), 0), (colour, 1)):
        a, b, c, d = f.fit(1), f.fit(5), f.fit(11), f.fit(15)
        f.pixels(a + grow, b + grow, c - grow, d - grow, shade)
        for x, y in ((6, 4), (12, 10)):
            f.canvas.fill(circle(x * f.scale, y * f.scale, 2.6 * f.scale - grow), shade)
    f.pixels(f.fit(4), f.fit(5) + 1, f.fit(8), f.fit(7), colour)


def preferences(f):
    tile(f, p.SLATE)
    for x, y in pick(f, ((5, 9), (8, 5), (11, 8)), ((7, 14), (11, 7), (15, 12))):
        f.pixels(x, pick(f, 4, 6), x + pick(f, 1, 2), pick(f, 12, 18), dark(p.SLATE, 0.5))
        f.pixels(x - 1, y, x + pick(f, 2, 3), y + pick(f, 2, 3), "#ffffff")


def round_sign(name, colour, sizes=(6, 10)):
    def draw(f):
        f.disc(8, 8, 7, dark(colour, 0.35))
        f.inner_disc(f.shade(light(colour, 0.2), colour, 1, 15))
        start = [(size - glyph) // 2 for size, glyph in zip((16, 24), sizes)]
        f.glyph(name, start, start, "#ffffff", colour, sizes)

    return draw


def warning(f):
    s = f.scale
    for grow, colour in ((2.6, dark(p.YELLOW, 0.4)), (2.6 - 2 / s, p.YELLOW)):
        corners = (8 * s, 2.6 * s), (13.6 * s, 12.7 * s), (2.4 * s, 12.7 * s)
        f.canvas.fill(polygon(*corners), colour, rounding=grow * s)
    f.glyph("exclamation", (5, 8), (6, 9), dark(p.YELLOW, 0.75), p.YELLOW)


def person(f, sizes=(12, 18), at=None, colour=p.BLUE):
    start = at or ((2, 3), (2, 3))
    f.glyph("person", *start, dark(colour, 0.12), colour, sizes)


def people(f):
    person(f, (8, 12), ((1, 2), (2, 3)), p.TEAL)
    person(f, (10, 15), ((5, 8), (4, 6)))


def padlock(opened):
    def draw(f):
        colour = p.YELLOW
        edge = dark(colour, 0.4)
        for x1, x2, low in ((4, 12, 3), (4, 6, 7), (10, 12, 4 if opened else 7)):
            f.rect(x1, 1, x2, low, p.METAL_EDGE)
        f.plate(3, 7, 13, 15, light(colour, 0.3), colour, edge)
        f.rect(7, 10, 9, 13, edge)

    return draw


def clipboard(f):
    f.plate(2, 2, 14, 15, light(p.WOOD, 0.15), dark(p.WOOD, 0.1), dark(p.WOOD, 0.45))
    f.rect(4, 4, 12, 14, p.PAPER)
    f.rect(5, 1, 11, 4, p.METAL_EDGE)
    rows(f, pick(f, [6, 8, 10, 12], [9, 11, 13, 15, 17]), last=9)


DRAWINGS = {
    "application-x-executable": on_tile("gear", p.PROGRAM, (8, 12)),
    "application-x-addon": addon,
    "inode-fifo": on_tile("pipe", p.SLATE, (8, 12)),
    "inode-socket": on_tile("plug", p.SLATE, (8, 12)),
    "inode-chardevice": on_tile("signal", p.SLATE, (6, 12)),
    "inode-blockdevice": on_tile("blocks", p.SLATE, (8, 10)),
    "preferences-system": preferences,
    "avatar-default": person,
    "system-users": people,
    "dialog-information": round_sign("info", p.BLUE),
    "dialog-warning": warning,
    "dialog-error": round_sign("cross", p.RED),
    "dialog-question": round_sign("question", p.PURPLE),
    "changes-prevent": padlock(opened=False),
    "changes-allow": padlock(opened=True),
    "emblem-symbolic-link": on_tile("arrow", p.STONE, (8, 12)),
    "emblem-shared": on_tile("share", p.TEAL, (8, 12)),
    "emblem-mounted": on_tile("check", p.GREEN, (8, 12)),
    "go-previous": round_sign("left", p.SLATE, (8, 12)),
    "go-next": round_sign("right", p.SLATE, (8, 12)),
    "media-eject": round_sign("eject", p.SLATE, (6, 10)),
    "edit-paste": clipboard,
}
