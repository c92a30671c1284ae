# SPDX-License-Identifier: MIT
"""Programs, special files, people and signs, at 128 points."""
from canvas import box, circle, dark, light, polygon, Shade
from large.bases import glyph, on_tile, plate, raised, SHADOW, shadow, text_lines, tile
import palette as p


def addon(canvas):
    raised(canvas, "puzzle", 70, 58, 2.1, p.GREEN)


def preferences(canvas):
    tile(canvas, p.SLATE)
    for x, y in ((40, 72), (64, 48), (88, 80)):
        canvas.line(f"M{x} 36V92", dark(p.SLATE, 0.5), 6)
        canvas.line(f"M{x} {y}V92", "#9cd0ff", 6)
        canvas.fill(circle(x, y + 2, 10), "#000000", 0.2)
        canvas.fill(circle(x, y, 10), Shade("#ffffff", "#d8dfe7", y - 10, y + 10))


def round_sign(name, colour, scale=1.3):
    def draw(canvas):
        shadow(canvas, circle(64, 64, 52))
        canvas.fill(circle(64, 64, 52), dark(colour, 0.35))
        canvas.fill(circle(64, 64, 50), Shade(light(colour, 0.22), colour, 14, 114))
        glyph(canvas, name, 64, 64, "#ffffff", scale)

    return draw


def warning(canvas):
    points = (64, 20), (112, 104), (16, 104)
    canvas.begin("translate(0 2)")
    canvas.fill(polygon(*points), "#000000", SHADOW, rounding=16)
    canvas.end()
    canvas.fill(polygon(*points), dark(p.YELLOW, 0.4), rounding=16)
    canvas.fill(polygon(*points), Shade(light(p.YELLOW, 0.3), p.YELLOW, 20, 108), rounding=12)
    glyph(canvas, "exclamation", 64, 74, dark(p.YELLOW, 0.75), 1.15)


def person(canvas):
    raised(canvas, "person", 64, 64, 2.1, p.BLUE)


def people(canvas):
    raised(canvas, "person", 44, 56, 1.6, p.TEAL)
    raised(canvas, "person", 80, 70, 1.9, p.BLUE)


def padlock(name):
    return lambda canvas: raised(canvas, name, 64, 62, 2.2, p.YELLOW)


def clipboard(canvas):
    shadow(canvas, box(20, 16, 88, 104, 8))
    plate(canvas, 20, 16, 88, 104, 8, light(p.WOOD, 0.15), dark(p.WOOD, 0.1), dark(p.WOOD, 0.45))
    plate(canvas, 28, 24, 72, 88, 4, p.PAPER, p.PAPER_SHADE, p.PAPER_EDGE)
    text_lines(canvas, range(48, 97, 8))
    plate(canvas, 44, 8, 40, 24, 6, p.METAL, p.METAL_SHADE, p.METAL_EDGE)


DRAWINGS = {
    "application-x-executable": on_tile("gear", p.PROGRAM, scale=1.35),
    "application-x-addon": addon,
    "inode-fifo": on_tile("pipe", p.SLATE),
    "inode-socket": on_tile("plug", p.SLATE),
    "inode-chardevice": on_tile("signal", p.SLATE),
    "inode-blockdevice": on_tile("blocks", p.SLATE),
    "preferences-system": preferences,
    "avatar-default": person,
    "system-users": people,
    "dialog-information": round_sign("info", p.BLUE),
    "dialog-warning": warning,
    "dialog-error": round_sign("cross", p.RED, 1.4),
    "dialog-question": round_sign("question", p.PURPLE),
    "changes-prevent": padlock("locked"),
    "changes-allow": padlock("unlocked"),
    "emblem-symbolic-link": on_tile("arrow", p.STONE, scale=1.4),
    "emblem-shared": on_tile("share", p.TEAL, scale=1.4),
    "emblem-mounted": on_tile("check", p.GREEN, scale=1.4),
    "go-previous": round_sign("left", p.SLATE),
    "go-next": round_sign("right", p.SLATE),
    "media-eject": round_sign("eject", p.SLATE),
    "edit-paste": clipboard,
}
