# SPDX-License-Identifier: MIT
"""Files: pages and what else holds contents, at 16 and 24 points."""
from canvas import dark, light, polygon
from small.bases import page, page_with, pick, rows, SLANT
import palette as p


def blank(f):
    page(f)


def text(f):
    page(f)
    rows(f, pick(f, [4], [6, 8]), x2=8)
    rows(f, pick(f, [6, 8, 10, 12], [10, 12, 14, 16, 18]), last=9)


def script(f):
    page(f)
    f.plate(4.5, 6, 11.5, 13, light(p.NIGHT, 0.05), dark(p.NIGHT, 0.2), dark(p.NIGHT, 0.4))
    f.glyph("prompt", (6, 9), (8, 11), p.PROMPT, p.NIGHT, (4, 6))


def template(f):
    page(f, fold=p.DRAFT_FOLD, top=p.DRAFT_PAPER, bottom=p.DRAFT_SHADE, edge=p.DRAFT)
    f.glyph("template", (5, 8), (7, 11), p.DRAFT, p.PAPER)


def image(f):
    f.plate(1, 3, 15, 13, p.PAPER, p.PAPER_SHADE, p.PAPER_EDGE)
    f.rect(3, 5, 13, 11, f.shade(p.SKY, p.HORIZON, 5, 11))
    f.disc(10.9, 6.6, 1.1, p.SUN)
    left, right, low = f.fit(3), f.fit(13), f.fit(11)
    s = f.scale
    mountain = (left, low), (left, low - 2 * s), (6 * s, 6.4 * s), (9.6 * s, low)
    hill = (7 * s, low), (10.6 * s, 8 * s), (right, low - s), (right, low)
    f.canvas.fill(polygon(*mountain), "#43796a")
    f.canvas.fill(polygon(*hill), "#5f9f57")


def video(f):
    f.plate(1, 3, 15, 13, light(p.NIGHT, 0.1), dark(p.NIGHT, 0.2), p.NIGHT_EDGE)
    f.rect(2, 6, 14, 10, f.shade(p.FILM, p.FILM_SHADE, 6, 10))
    for x in (3, 6, 9, 12):
        for y in (4, 11):
            f.rect(x, y, x + 1, y + 1, "#e3e8ee")
    f.free("#ffffff", (6.6, 5.9), (10.4, 8), (6.6, 10.1))


def package(f):
    f.shape(dark(p.WOOD, 0.45), (3, 1), (13, 1), (15, 5), (15, 6), (1, 6), (1, 5))
    a, b, c, d = f.fit(3), f.fit(1), f.fit(13), f.fit(5)
    lid = (a, b + 1), (c, b + 1), (f.fit(15) - 1, d), (f.fit(1) + 1, d)
    f.canvas.fill(polygon(*lid), light(p.WOOD, 0.35))
    f.plate(1, 5, 15, 15, p.WOOD, dark(p.WOOD, 0.14), dark(p.WOOD, 0.45))
    f.pixels(f.fit(7), b + 1, f.fit(9), f.fit(8), p.TAPE)
    f.row(3, 12, 6, dark(p.WOOD, 0.45))


def document(f):
    page(f)
    f.pixels(f.fit(5), f.fit(6), f.fit(11), f.fit(8), p.BLUE)
    rows(f, pick(f, [4], [6]), x2=8, colour=p.BLUE)
    rows(f, pick(f, [9, 11], [14, 16, 18]), last=9)


def spreadsheet(f):
    page(f)
    f.rect(5, 6, 11, 13, light(p.GREEN, 0.25))
    f.rect(5, 6, 11, 8, p.GREEN)
    a, c = f.fit(5), f.fit(11)
    for y in pick(f, (8, 10), (12, 14, 16)):
        f.pixels(a, y, c, y + 1, p.PAPER)
    for x in pick(f, (7,), (10, 13)):
        f.pixels(x, f.fit(6), x + 1, f.fit(13), p.PAPER)


def presentation(f):
    page(f)
    f.rect(4, 6, 12, 11, p.ORANGE)
    f.rect(7, 11, 9, 13, dark(p.ORANGE, 0.25))
    low = f.fit(10)
    for x, height in pick(f, ((5, 1), (7, 2), (9, 3)), ((8, 2), (11, 3), (14, 5))):
        f.pixels(x, low - height, x + pick(f, 1, 2), low, "#ffffff")


def drawing(f):
    page(f)
    f.rect(5, 9, 9, 13, p.PURPLE)
    f.disc(9.2, 7.6, 2, p.YELLOW)
    f.shape(p.TEAL, (10, 9), (12, 13), (8, 13))


LETTERS = {
    "P": ("##.", "#.#", "##.", "#..", "#.."),
    "D": ("##.", "#.#", "#.#", "#.#", "##."),
    "F": ("###", "#..", "##.", "#..", "#.."),
}


def pdf(f):
    page(f)
    rows(f, pick(f, [4], [6, 8]), x2=8)
    left, top = pick(f, (1, 7), (3, 10))
    f.pixels(left, top, left + pick(f, 13, 15), top + pick(f, 7, 9), p.RED, 1)
    x, y = left + pick(f, 1, 2), top + pick(f, 1, 2)
    for index, name in enumerate("PDF"):
        for row, line in enumerate(LETTERS[name]):
            for column, mark in enumerate(line):
                if mark == "#":
                    at = x + 4 * index + column, y + row
                    f.pixels(*at, at[0] + 1, at[1] + 1, "#ffffff")


def calendar(f):
    f.plate(2, 2, 14, 15, p.PAPER, p.PAPER_SHADE, p.PAPER_EDGE)
    a, b, c, d = f.fit(2), f.fit(2), f.fit(14), f.fit(6)
    f.pixels(a, b, c, d, p.RED)
    for x in (4, 11):
        f.rect(x, 1, x + 1, 4, p.INK)
    for y in (8, 11):
        for x in (4, 7, 10):
            f.rect(x, y, x + 2, y + 2, p.RED if (x, y) == (10, 11) else p.PALE)


def address_book(f):
    for y, colour in ((3, p.YELLOW), (7, p.GREEN), (11, p.RED)):
        f.rect(12, y, 15, y + 2, colour)
    colour = p.LEATHER
    f.plate(2, 1, 13, 15, light(colour, 0.12), colour, dark(colour, 0.4))
    f.rect(3, 2, 4, 14, dark(colour, 0.25))
    f.rect(5, 4, 12, 12, p.PAPER)
    f.glyph("person", (6, 9), (5, 8), dark(colour, 0.1), p.PAPER, (5, 7))


def certificate(f):
    f.plate(1, 3, 15, 13, p.PAPER, p.PAPER_SHADE, p.PAPER_EDGE)
    f.rect(3, 5, 9, 6, p.SLATE)
    rows(f, pick(f, [7, 9], [11, 13]), x1=3, x2=8)
    f.shape(p.RED, (9, 9), (13, 9), (13, 15), (11, 13), (9, 15))
    f.disc(11, 8, 2.8, dark(p.YELLOW, 0.25))
    f.disc(11, 8, 2.1, p.YELLOW)


def broken_link(f):
    a, b, c, d = f.fit(3), f.fit(1), f.fit(13), f.fit(15)
    f.pixels(a + 1, b + 1, c - 1, d - 1, p.PAPER, 0, 0.8)
    for x in range(a, c, 3):
        f.pixels(x, d - 1, min(x + 2, c), d, p.GREY)
        if x < c - 4 * f.scale:
            f.pixels(x, b, x + 2, b + 1, p.GREY)
    for y in range(b, d, 3):
        f.pixels(a, y, a + 1, min(y + 2, d), p.GREY)
        if y > b + 3 * f.scale:
            f.pixels(c - 1, y, c, min(y + 2, d), p.GREY)
    n = SLANT * f.scale
    f.canvas.line(f"M{c - n} {b + .5}L{c - .5} {b + n}", p.GREY, 1)
    f.glyph("cross", (5, 8), (6, 10), p.RED, p.PAPER)


def envelope(f):
    f.plate(1, 3, 15, 13, p.PAPER, p.PAPER_SHADE, p.PAPER_EDGE)
    s = f.scale
    f.canvas.line(f"M{1.5 * s} {3.8 * s}L{8 * s} {9 * s}L{14.5 * s} {3.8 * s}", p.PAPER_EDGE, 1)


def cube(f):
    top, left, right = (((8, 1), (14, 4), (8, 7), (2, 4)), ((2, 4), (8, 7), (8, 15), (2, 12)),
                        ((14, 4), (8, 7), (8, 15), (14, 12)))
    for points, shade in ((top, light(p.TEAL, 0.45)), (left, p.TEAL), (right, dark(p.TEAL, 0.28))):
        f.free(shade, *points)


def binary(f):
    page(f)
    for row, y in enumerate(pick(f, (6, 10), (9, 15))):
        for column, x in enumerate(pick(f, (5, 8), (8, 13))):
            height = pick(f, 3, 5)
            if (row + column) % 2:
                f.pixels(x + 1, y, x + 2, y + height, p.GREY)
            else:
                f.pixels(x, y, x + 3, y + height, p.GREY)
                f.pixels(x + 1, y + 1, x + 2, y + height - 1, p.PAPER)


DRAWINGS = {
    "generic-file": blank,
    "text-x-generic": text,
    "text-html": page_with("globe", p.BLUE),
    "text-x-script": script,
    "text-x-generic-template": template,
    "image-x-generic": image,
    "audio-x-generic": page_with("music", p.PINK),
    "video-x-generic": video,
    "font-x-generic": page_with("letter", p.INK),
    "model-x-generic": cube,
    "package-x-generic": package,
    "message-x-generic": envelope,
    "application-octet-stream": binary,
    "application-x-sharedlib": page_with("gear", p.SLATE),
    "application-x-desktop": page_with("window", p.BLUE),
    "application-pdf": pdf,
    "application-xml": page_with("markup", dark(p.ORANGE, 0.1)),
    "application-certificate": certificate,
    "x-office-document": document,
    "x-office-spreadsheet": spreadsheet,
    "x-office-presentation": presentation,
    "x-office-drawing": drawing,
    "x-office-calendar": calendar,
    "x-office-address-book": address_book,
    "inode-symlink": broken_link,
    "unknown": page_with("question", p.GREY),
}
