# SPDX-License-Identifier: MIT
"""Files: pages and what else holds contents, at 128 points."""
from canvas import box, circle, dark, light, polygon, ring, Shade
from large.bases import glyph, page, page_with, photo, plate, shadow, text_lines, upper_edge
from large.glyphs import GLYPHS
import palette as p


def blank(canvas):
    page(canvas)


def text(canvas):
    page(canvas)
    for y in (32, 40):
        canvas.fill(box(40, y, 28, 4), p.GREY)
    text_lines(canvas, range(48, 105, 8))


def script(canvas):
    page(canvas)
    plate(canvas, 36, 48, 56, 56, 6, light(p.NIGHT, 0.06), dark(p.NIGHT, 0.25), dark(p.NIGHT, 0.4))
    glyph(canvas, "prompt", 64, 75, p.PROMPT, 0.95)


def html(canvas):
    page(canvas)
    glyph(canvas, "globe", 64, 76, p.BLUE, 1.2)


def template(canvas):
    page(canvas, fold=p.DRAFT_FOLD, top=p.DRAFT_PAPER, bottom=p.DRAFT_SHADE, edge=p.DRAFT)
    canvas.line("M40 48H88V104H40z", p.DRAFT, 4, dashes="8 6", cap=None)
    for y in (60, 72):
        canvas.fill(box(48, y, 32, 4), p.DRAFT)
    canvas.fill(box(48, 84, 20, 12, 1), p.DRAFT)


def image(canvas):
    photo(canvas)
    canvas.fill(box(16, 32, 96, 64), Shade(p.SKY, p.HORIZON, 32, 84))
    canvas.fill(circle(88, 50, 9), p.SUN)
    canvas.fill("M16 84L44 52 72 84 80 75V96H16z", Shade("#5d8f7d", "#3f7563", 52, 96))
    canvas.fill("M44 52L56 66 48 64 42 69 33 65z", "#eef6fb")
    canvas.fill("M48 96L84 66 112 90V96z", Shade("#79b36a", "#55924f", 66, 96))


def audio(canvas):
    page(canvas)
    glyph(canvas, "music", 62, 77, p.PINK, 1.25)


def video(canvas):
    photo(canvas, light(p.NIGHT, 0.1), dark(p.NIGHT, 0.2), p.NIGHT_EDGE)
    for x in range(20, 116, 16):
        for y in (31, 89):
            canvas.fill(box(x - 4, y, 8, 8, 2), "#dfe5ec")
    canvas.fill(box(12, 44, 104, 40, 0), Shade(p.FILM, p.FILM_SHADE, 44, 84))
    canvas.fill(circle(64, 64, 17), "#ffffff", 0.95)
    canvas.fill("M59 56L73 64 59 72z", p.NIGHT, rounding=3)


def package(canvas):
    """A carton with tape, seen like a drive."""
    shadow(canvas, box(12, 44, 104, 68, 4))
    canvas.fill("M28 16H100a6 6 0 0 1 5 3L116 40V52H12V40L23 19a6 6 0 0 1 5-3z", dark(p.WOOD, 0.45))
    canvas.fill("M28 18H100a4 4 0 0 1 4 2L114 41H14L24 20a4 4 0 0 1 4-2z",
                Shade(light(p.WOOD, 0.42), light(p.WOOD, 0.16), 18, 42))
    canvas.fill(box(12, 40, 104, 72, 6), dark(p.WOOD, 0.45))
    canvas.fill(box(14, 42, 100, 68, 4), Shade(p.WOOD, dark(p.WOOD, 0.16), 42, 110))
    canvas.fill(box(16, 42, 96, 2), "#ffffff", 0.4)
    canvas.fill("M55 18H73L76 41V64H52V41z", p.TAPE, 0.85)
    canvas.fill("M52 41H76V43H52z", dark(p.WOOD, 0.3), 0.4)
    canvas.fill(box(24, 84, 32, 4), dark(p.WOOD, 0.45), 0.7)
    canvas.fill(box(24, 92, 20, 4), dark(p.WOOD, 0.45), 0.7)


def document(canvas):
    page(canvas)
    canvas.fill(box(40, 48, 48, 8), p.BLUE)
    canvas.fill(box(40, 64, 20, 20, 1), light(p.BLUE, 0.35))
    canvas.fill("M40 84V80L47 72 52 78 55 75 60 80V84z", p.BLUE)
    for y in (64, 72, 80):
        canvas.fill(box(64, y, 24, 4), p.GREY)
    text_lines(canvas, (92, 100), short=32)


def spreadsheet(canvas):
    page(canvas)
    canvas.fill(box(36, 48, 56, 56, 2), p.GREEN)
    for column, x in enumerate((39, 58, 76)):
        for row, y in enumerate((51, 62, 73, 84, 94)):
            shade = light(p.GREEN, 0.55) if row == 0 or column == 0 else "#ffffff"
            width, height = (16, 15, 13)[column], (8, 8, 8, 7, 7)[row]
            canvas.fill(box(x, y, width, height), shade)


def presentation(canvas):
    page(canvas)
    plate(canvas, 34, 48, 60, 44, 4, light(p.ORANGE, 0.15), p.ORANGE, dark(p.ORANGE, 0.25))
    for x, y in ((44, 72), (56, 64), (68, 68), (80, 56)):
        canvas.fill(box(x - 2, y, 8, 84 - y), "#ffffff")
    canvas.fill(box(62, 92, 4, 12), dark(p.ORANGE, 0.25))
    canvas.fill(box(50, 102, 28, 4, 2), dark(p.ORANGE, 0.25))


def drawing(canvas):
    page(canvas)
    canvas.fill(box(38, 72, 30, 30, 3), p.PURPLE)
    canvas.fill(circle(74, 62, 15), p.YELLOW, 0.92)
    canvas.fill(polygon((80, 76), (93, 102), (67, 102)), p.TEAL, 0.92, rounding=3)


def pdf(canvas):
    page(canvas)
    text_lines(canvas, (44, 52), width=28)
    plate(canvas, 16, 64, 80, 32, 4, light(p.RED, 0.1), dark(p.RED, 0.08), dark(p.RED, 0.3))
    canvas.line("M28 88V72H34a5 5 0 0 1 0 10H28M50 72V88H54a8 8 0 0 0 0-16zM74 88V72H84M74 80H82",
                "#ffffff", 4)


def calendar(canvas):
    shadow(canvas, box(16, 20, 96, 96, 8))
    plate(canvas, 16, 20, 96, 96, 8, p.PAPER, p.PAPER_SHADE, p.PAPER_EDGE)
    canvas.fill("M16 48V28a8 8 0 0 1 8-8H104a8 8 0 0 1 8 8V48z",
                Shade(light(p.RED, 0.12), dark(p.RED, 0.08), 20, 48))
    upper_edge(canvas, 16, 20, 96, 8, 0.35)
    for x in (36, 84):
        canvas.fill(box(x, 10, 8, 24, 4), dark(p.SLATE, 0.2))
        canvas.fill(box(x + 2, 12, 4, 18, 2), p.PALE)
    for row, y in enumerate((58, 76, 94)):
        for column, x in enumerate((28, 48, 68, 88)):
            if (row, column) != (2, 3):
                canvas.fill(box(x, y, 12, 10, 1), p.RED if (row, column) == (1, 2) else p.PALE)


def address_book(canvas):
    for y, colour in ((30, p.YELLOW), (58, p.GREEN), (86, p.RED)):
        canvas.fill(box(100, y, 14, 20, 4), colour)
    shadow(canvas, box(20, 8, 84, 112, 8))
    colour = p.LEATHER
    canvas.fill(box(20, 8, 84, 112, 8), dark(colour, 0.4))
    canvas.fill(box(22, 10, 80, 108, 6), Shade(light(colour, 0.16), colour, 10, 118))
    canvas.fill("M28 10H36V118H28a6 6 0 0 1-6-6V16a6 6 0 0 1 6-6z", "#000000", 0.22)
    canvas.fill(box(44, 32, 50, 60, 4), "#000000", 0.2)
    canvas.fill(box(44, 30, 50, 60, 4), Shade(p.PAPER, p.PAPER_SHADE, 30, 90))
    glyph(canvas, "person", 69, 60, dark(colour, 0.1), 0.95)


def certificate(canvas):
    photo(canvas)
    canvas.line("M17 33H111V95H17z", light(p.YELLOW, 0.1), 2, cap=None)
    canvas.fill(box(28, 44, 44, 6), p.SLATE)
    text_lines(canvas, (58, 66, 74), x=28, width=40)
    canvas.fill("M80 72L74 112 88 104 102 112 96 72z", Shade(p.RED, dark(p.RED, 0.15), 72, 112))
    canvas.begin("translate(88 66)")
    canvas.fill(polygon(*ring(12, 20, 16.5)), dark(p.YELLOW, 0.2), rounding=2)
    gold = Shade(light(p.YELLOW, 0.4), p.YELLOW, -18, 18)
    canvas.fill(polygon(*ring(12, 18.5, 15)), gold, rounding=2)
    canvas.fill(circle(0, 0, 9), dark(p.YELLOW, 0.12))
    canvas.end()


def library(canvas):
    page(canvas)
    glyph(canvas, "gear", 64, 76, p.SLATE, 1.15)


def broken_link(canvas):
    """The outline of a page that is not there."""
    outline = "M28 18a6 6 0 0 1 6-6H75L100 37V110a6 6 0 0 1-6 6H34a6 6 0 0 1-6-6z"
    canvas.fill(outline, p.PAPER, 0.8)
    canvas.line(outline, p.GREY, 4, dashes="9 6", cap=None)
    canvas.begin("translate(64 72) rotate(-45)")
    GLYPHS["chain"].draw(canvas, p.SLATE)
    canvas.line("M-3-15L-6-22M3-15V-23M-3 15V23M3 15L6 22", p.RED, 4)
    canvas.end()


def unknown(canvas):
    page(canvas)
    glyph(canvas, "question", 64, 74, p.GREY, 1.15)


def envelope(canvas):
    photo(canvas)
    canvas.line("M12 28L56 66a12 12 0 0 0 16 0L116 28M14 100L48 62M114 100L80 62", p.PAPER_EDGE, 3)


def cube(canvas):
    top = (64, 12), (112, 36), (64, 60), (16, 36)
    left = (16, 36), (64, 60), (64, 116), (16, 92)
    right = (112, 36), (64, 60), (64, 116), (112, 92)
    for points in (top, left, right):
        canvas.fill(polygon(*points), dark(p.TEAL, 0.45), rounding=8)
    for points, shade in (
        (left, Shade(light(p.TEAL, 0.12), p.TEAL, 36, 116)),
        (right, Shade(dark(p.TEAL, 0.12), dark(p.TEAL, 0.3), 36, 116)),
        (top, Shade(light(p.TEAL, 0.55), light(p.TEAL, 0.38), 12, 60)),
    ):
        canvas.fill(polygon(*points), shade, rounding=3)


def binary(canvas):
    page(canvas)
    for row, bits in enumerate(("011", "101", "010")):
        for column, bit in enumerate(bits):
            x, y = 40 + column * 17, 44 + row * 21
            if bit == "1":
                canvas.fill(box(x + 4, y, 6, 16), p.GREY)
            else:
                canvas.line(box(x + 2, y + 2, 10, 12, 4), p.GREY, 4, cap=None)


DRAWINGS = {
    "generic-file": blank,
    "text-x-generic": text,
    "text-html": html,
    "text-x-script": script,
    "text-x-generic-template": template,
    "image-x-generic": image,
    "audio-x-generic": audio,
    "video-x-generic": video,
    "font-x-generic": page_with("letter", p.INK, 1.05),
    "model-x-generic": cube,
    "package-x-generic": package,
    "message-x-generic": envelope,
    "application-octet-stream": binary,
    "application-x-sharedlib": library,
    "application-x-desktop": page_with("window", p.BLUE),
    "application-pdf": pdf,
    "application-xml": page_with("markup", p.ORANGE),
    "application-certificate": certificate,
    "x-office-document": document,
    "x-office-spreadsheet": spreadsheet,
    "x-office-presentation": presentation,
    "x-office-drawing": drawing,
    "x-office-calendar": calendar,
    "x-office-address-book": address_book,
    "inode-symlink": broken_link,
    "unknown": unknown,
}
