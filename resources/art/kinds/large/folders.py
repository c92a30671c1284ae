# SPDX-License-Identifier: MIT
"""Folders, at 128 points."""
from large.bases import engraved, folder, open_folder
import palette as p


def folder_with(name, scale=1.0):
    def draw(canvas):
        folder(canvas)
        engraved(canvas, name, 64, 75, p.FOLDER_GLYPH, scale)

    return draw


def drag_accept(canvas):
    open_folder(canvas)
    engraved(canvas, "plus", 64, 81, p.FOLDER_GLYPH)


def home(canvas):
    folder(canvas)
    engraved(canvas, "home", 64, 76, p.FOLDER_GLYPH, 1.05)


def desktop(canvas):
    folder(canvas)
    engraved(canvas, "desktop", 64, 76, p.FOLDER_GLYPH)


DRAWINGS = {
    "folder": folder,
    "folder-open": open_folder,
    "folder-drag-accept": drag_accept,
    "folder-documents": folder_with("documents", 0.95),
    "folder-download": folder_with("download"),
    "folder-music": folder_with("music", 0.95),
    "folder-pictures": folder_with("pictures"),
    "folder-videos": folder_with("videos"),
    "folder-publicshare": folder_with("share", 0.95),
    "folder-templates": folder_with("template", 0.95),
    "folder-remote": folder_with("globe"),
    "folder-recent": folder_with("recent", 0.95),
    "folder-favorites": folder_with("favorites"),
    "folder-locked": folder_with("locked", 0.95),
    "folder-applications": folder_with("applications", 0.95),
    "folder-fonts": folder_with("letter", 0.95),
    "folder-system": folder_with("gear"),
    "user-home": home,
    "user-desktop": desktop,
}
