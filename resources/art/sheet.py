# SPDX-License-Identifier: MIT
"""The contact sheet: every picture on a light and on a dark background, at one pixel per point."""
from PIL import Image

BACKGROUNDS = ["#fafafa", "#2e3436"]
GAP = 12  # between pictures, and around all of them
WIDTHS = [16, 24, 32, 48, 64, 128]
POPUP_WIDTH = 36  # of a toolbar popup's icon, with the arrow at the lower right


def badged(base, badges):
    """An icon of each width with its badge; base(width) renders the icon."""
    pages = {badge.width: badge for badge in badges}
    return [Image.alpha_composite(base(width), pages[width]) for width in WIDTHS]


def popup(icon, arrow):
    whole = icon.copy()
    whole.alpha_composite(arrow, (icon.width - arrow.width, icon.height - arrow.height))
    return whole


def placed(rows):
    """Each picture and the point of its upper left corner, and the size of the whole."""
    places, width, y = [], 0, GAP
    for row in rows:
        x, height = GAP, max(picture.height for picture in row)
        for picture in row:
            places.append((picture, (x, y + height - picture.height)))
            x += picture.width + GAP
        width, y = max(width, x), y + height + GAP
    return places, (width, y)


def contact_sheet(rows):
    places, (width, height) = placed(rows)
    sheet = Image.new("RGB", (width * len(BACKGROUNDS), height))
    for number, background in enumerate(BACKGROUNDS):
        half = Image.new("RGB", (width, height), background)
        for picture, place in places:
            half.paste(picture, place, picture)
        sheet.paste(half, (width * number, 0))
    return sheet
