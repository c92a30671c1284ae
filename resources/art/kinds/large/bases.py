# SPDX-License-Identifier: MIT
"""What the kinds stand on, 128 points a side: folder, page, photo, drive, tile. Edges are at
multiples of 4, so that they are whole pixels at 32."""
from canvas import Shade, box, dark, light
from large.glyphs import GLYPHS
import palette as p

STROKE = 2  # the width of every outline
GLOW = 0.5  # how bright the upper edges are
SHADOW = 0.14


def shadow(canvas, path):
    """On the ground, one stroke below."""
    canvas.begin(f"translate(0 {STROKE})")
    canvas.fill(path, "#000000", SHADOW)
    canvas.end()


def glyph(canvas, name, x, y, colour, scale=1.0):
    canvas.begin(f"translate({x} {y})" + (f" scale({scale})" if scale != 1 else ""))
    GLYPHS[name].draw(canvas, colour)
    canvas.end()


def engraved(canvas, name, x, y, colour, scale=1.0, glow=0.4):
    """A glyph cut into the surface: its lower edge is lit."""
    canvas.begin(f"translate({x} {y + STROKE})" + (f" scale({scale})" if scale != 1 else ""))
    GLYPHS[name].draw(canvas, "#ffffff", glow)
    canvas.end()
    glyph(canvas, name, x, y, colour, scale)


def raised(canvas, name, x, y, scale, colour, edge=0.4):
    """A glyph that stands on its own, with a darker lower edge."""
    for offset, paint in (
        (STROKE, dark(colour, edge)),
        (0, Shade(light(colour, 0.35), colour, -22, 22)),
    ):
        glyph(canvas, name, x, y + offset, paint, scale)


def plate(canvas, x, y, width, height, radius, top, bottom, edge):
    """A body with an outline, lit from above."""
    canvas.fill(box(x, y, width, height, radius), edge)
    inner = (x + STROKE, y + STROKE, width - 2 * STROKE, height - 2 * STROKE)
    canvas.fill(
        box(*inner, radius - STROKE), Shade(top, bottom, inner[1], inner[1] + inner[3])
    )


def upper_edge(canvas, x, y, width, radius, opacity=GLOW):
    """The light on the upper edge of a body with round corners."""
    r, s = radius, STROKE
    canvas.fill(
        f"M{x} {y + r}a{r} {r} 0 0 1 {r}-{r}h{width - 2 * r}a{r} {r} 0 0 1 {r} {r}"
        f"v{s}a{r} {r} 0 0 0-{r}-{r}h-{width - 2 * r}a{r} {r} 0 0 0-{r} {r}z",
        "#ffffff",
        opacity,
    )


def folder_back(canvas):
    tab = "M8 28V24a8 8 0 0 1 8-8H43a10 10 0 0 1 7 3l6 6a10 10 0 0 0 7 3H112a8 8 0 0 1 8 8V72H8z"
    canvas.fill(tab, Shade(p.FOLDER_BACK, p.FOLDER_EDGE, 16, 72))
    canvas.fill(
        "M8 26V24a8 8 0 0 1 8-8H43a10 10 0 0 1 7 3l6 6a10 10 0 0 0 7 3H112a8 8 0 0 1 8 8V38"
        "a8 8 0 0 0-8-8H63a10 10 0 0 1-7-3l-6-6a10 10 0 0 0-7-3H16a8 8 0 0 0-8 8z",
        "#ffffff",
        0.25,
    )


def folder(canvas):
    shadow(canvas, box(8, 60, 112, 52, 8))
    folder_back(canvas)
    canvas.fill(box(8, 40, 112, 72, 8), p.FOLDER_EDGE)
    canvas.fill(box(8, 40, 112, 70, 8), Shade(p.FOLDER_TOP, p.FOLDER, 40, 110))
    upper_edge(canvas, 8, 40, 112, 8)


def open_folder(canvas):
    shadow(canvas, box(12, 60, 104, 52, 8))
    folder_back(canvas)
    canvas.fill("M8 70H120V100H8z", p.FOLDER_EDGE)
    canvas.fill("M20 36H108V64H20z", Shade(p.PAPER, p.PAPER_SHADE, 36, 64))
    front = "M4 {0}a8 8 0 0 1 8-9H116a8 8 0 0 1 8 9L120 {1}a8 8 0 0 1-8 7H16a8 8 0 0 1-8-7z"
    canvas.fill(front.format(61, 105), p.FOLDER_EDGE)
    canvas.fill(front.format(61, 103), Shade(p.FOLDER_TOP, p.FOLDER, 52, 110))
    upper_edge(canvas, 4, 52, 120, 8)


PAGE = "M24 16a8 8 0 0 1 8-8H76L104 36v76a8 8 0 0 1-8 8H32a8 8 0 0 1-8-8z"


def page(canvas, fold=p.PALE, top=p.PAPER, bottom=p.PAPER_SHADE, edge=p.PAPER_EDGE):
    shadow(canvas, PAGE)
    canvas.fill(PAGE, Shade(light(edge, 0.25), edge, 8, 120))
    canvas.fill(
        "M26 16a6 6 0 0 1 6-6H75.2L102 36.8V112a6 6 0 0 1-6 6H32a6 6 0 0 1-6-6z",
        Shade(top, bottom, 10, 118),
    )
    canvas.fill("M76 8v20a8 8 0 0 0 8 8h20z", Shade(dark(fold, 0.22), dark(fold, 0.12), 8, 36))
    canvas.fill("M76 8v18a8 8 0 0 0 8 8h18z", Shade(light(fold, 0.6), fold, 12, 34))


def text_lines(canvas, rows, colour=p.GREY, x=40, width=48, short=None):
    """Lines of text; the last one is shorter."""
    for index, y in enumerate(rows):
        length = (short or width * 0.6) if index == len(rows) - 1 else width
        canvas.fill(box(x, y, length, 4), colour)


def photo(canvas, border=p.PAPER, shade=p.PAPER_SHADE, edge=p.PAPER_EDGE):
    """A sheet that lies across."""
    sheet = box(8, 24, 112, 80, 6)
    shadow(canvas, sheet)
    plate(canvas, 8, 24, 112, 80, 6, border, shade, edge)


def drive(canvas, top=p.METAL, front=p.METAL_SHADE, edge=p.METAL_EDGE, lamp=p.GREEN):
    """A case seen from the front and slightly from above."""
    shadow(canvas, box(8, 72, 112, 32, 8))
    lid = "M27 28a8 8 0 0 1 8-6H93a8 8 0 0 1 8 6L120 76V84H8V76z"
    canvas.fill(lid, edge)
    canvas.fill("M29 28a6 6 0 0 1 6-4H93a6 6 0 0 1 6 4L117 74H11z",
                Shade(light(top, 0.5), dark(top, 0.08), 24, 74))
    canvas.fill(box(8, 72, 112, 32, 8), edge)
    canvas.fill(box(10, 74, 108, 28, 6), Shade(light(front, 0.35), dark(front, 0.06), 74, 102))
    canvas.fill(box(14, 74, 100, 2), "#ffffff", 0.6)
    if lamp:
        canvas.fill(box(100, 84, 8, 8, 4), lamp)


def tile(canvas, colour):
    """A rounded square for what is neither a page nor a folder."""
    body = box(16, 16, 96, 96, 20)
    shadow(canvas, body)
    canvas.fill(body, dark(colour, 0.35))
    shade = Shade(light(colour, 0.16), dark(colour, 0.18), 16, 110)
    canvas.fill(box(16, 16, 96, 94, 20), shade)
    upper_edge(canvas, 16, 16, 96, 20, 0.35)


def page_with(name, colour, scale=1.1, **paper):
    def draw(canvas):
        page(canvas, **paper)
        glyph(canvas, name, 64, 76, colour, scale)

    return draw


def on_tile(name, colour, glyph_colour="#ffffff", scale=1.2):
    def draw(canvas):
        tile(canvas, colour)
        canvas.begin(f"translate(64 {64 + STROKE}) scale({scale})")
        GLYPHS[name].draw(canvas, "#000000", 0.2)
        canvas.end()
        glyph(canvas, name, 64, 64, glyph_colour, scale)

    return draw
