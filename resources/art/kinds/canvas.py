# SPDX-License-Identifier: MIT
"""An SVG file in the making, of what Qt's SVG plug-in draws: filled and stroked paths, plain
colours and vertical gradients, opacity."""
import math
import re

DECIMALS = 2


def number(value):
    text = f"{value:.{DECIMALS}f}".rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


def box(x, y, width, height, radius=0):
    """The path of a rectangle with round corners."""
    n = [number(v) for v in (x + radius, y, width - 2 * radius, height - 2 * radius, radius)]
    if not radius:
        return f"M{n[0]} {n[1]}h{n[2]}v{n[3]}H{n[0]}z"
    r = n[4]
    mr = number(-radius)
    return (
        f"M{n[0]} {n[1]}h{n[2]}a{r} {r} 0 0 1 {r} {r}v{n[3]}a{r} {r} 0 0 1 {mr} {r}"
        f"H{n[0]}a{r} {r} 0 0 1 {mr} {mr}v{number(2 * radius - height)}"
        f"a{r} {r} 0 0 1 {r} {mr}z"
    )


def circle(x, y, radius):
    r, d = number(radius), number(2 * radius)
    return f"M{number(x - radius)} {number(y)}a{r} {r} 0 1 1 {d} 0a{r} {r} 0 1 1 -{d} 0z"


def ellipse(x, y, rx, ry):
    a, b, d = number(rx), number(ry), number(2 * rx)
    return f"M{number(x - rx)} {number(y)}a{a} {b} 0 1 1 {d} 0a{a} {b} 0 1 1 -{d} 0z"


def polygon(*points):
    return "M" + "L".join(f"{number(x)} {number(y)}" for x, y in points) + "z"


def ring(count, outer, inner, turn=0.0):
    """The points of a star, the first one at the top."""
    for index in range(2 * count):
        radius = inner if index % 2 else outer
        angle = math.pi * (index / count + turn - 0.5)
        yield radius * math.cos(angle), radius * math.sin(angle)


def mix(colour, towards, amount):
    """A colour between two."""
    pairs = zip(*(re.findall("..", c[1:]) for c in (colour, towards)))
    return "#" + "".join(
        f"{round(int(a, 16) + (int(b, 16) - int(a, 16)) * amount):02x}" for a, b in pairs
    )


def light(colour, amount):
    return mix(colour, "#ffffff", amount)


def dark(colour, amount):
    return mix(colour, "#10161f", amount)


class Shade:
    """A vertical gradient from one colour to another."""

    def __init__(self, top, bottom, from_y, to_y):
        self.key = (top, bottom, number(from_y), number(to_y))

    def definition(self, name):
        top, bottom, y1, y2 = self.key
        return (
            f'<linearGradient id="{name}" x1="0" y1="{y1}" x2="0" y2="{y2}"'
            f' gradientUnits="userSpaceOnUse"><stop stop-color="{top}"/>'
            f'<stop offset="1" stop-color="{bottom}"/></linearGradient>'
        )


class Canvas:
    def __init__(self, size):
        self.size = size
        self.shades = {}
        self.body = []
        self.depth = 0

    def paint(self, colour):
        if not isinstance(colour, Shade):
            return colour
        next_name = chr(ord("a") + len(self.shades))
        return f"url(#{self.shades.setdefault(colour.key, (next_name, colour))[0]})"

    def fill(self, path, colour, opacity=1.0, rounding=0):
        paint = self.paint(colour)
        extra = f' opacity="{number(opacity)}"' if opacity < 1 else ""
        if path.count("M") > 1:
            extra += ' fill-rule="evenodd"'
        if rounding:
            extra += f' stroke="{paint}" stroke-width="{number(rounding)}" stroke-linejoin="round"'
        self.body.append(f'<path fill="{paint}"{extra} d="{path}"/>')

    def line(self, path, colour, width, opacity=1.0, dashes=None, cap="round"):
        extra = f' opacity="{number(opacity)}"' if opacity < 1 else ""
        if dashes:
            extra += f' stroke-dasharray="{dashes}"'
        if cap:
            extra += f' stroke-linecap="{cap}" stroke-linejoin="round"'
        self.body.append(
            f'<path fill="none" stroke="{self.paint(colour)}" stroke-width="{number(width)}"'
            f'{extra} d="{path}"/>'
        )

    def begin(self, transform):
        self.body.append(f'<g transform="{transform}">')

    def end(self):
        self.body.append("</g>")

    def text(self):
        shades = "".join(shade.definition(name) for name, shade in self.shades.values())
        lines = [
            f'<svg xmlns="http://www.w3.org/2000/svg" width="{self.size}" height="{self.size}"'
            f' viewBox="0 0 {self.size} {self.size}">',
            f"<defs>{shades}</defs>" if shades else None,
            *self.body,
            "</svg>",
        ]
        return "\n".join(line for line in lines if line) + "\n"
