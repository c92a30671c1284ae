# SPDX-License-Identifier: MIT
"""Folders, at 16 and 24 points."""
from small.bases import folder, open_folder
import palette as p


def folder_with(name):
    def draw(f):
        folder(f)
        f.glyph(name, (5, 8), (6, 9), p.FOLDER_GLYPH_SMALL, p.FOLDER_MIDDLE)

    return draw


def drag_accept(f):
    open_folder(f)
    f.glyph("plus", (5, 8), (7, 11), p.FOLDER_GLYPH, p.FOLDER_MIDDLE, (6, 8))


DRAWINGS = {
    "folder": folder,
    "folder-open": open_folder,
    "folder-drag-accept": drag_accept,
    "folder-documents": folder_with("documents"),
    "folder-download": folder_with("download"),
    "folder-music": folder_with("music"),
    "folder-pictures": folder_with("pictures"),
    "folder-videos": folder_with("videos"),
    "folder-publicshare": folder_with("share"),
    "folder-templates": folder_with("template"),
    "folder-remote": folder_with("globe"),
    "folder-recent": folder_with("recent"),
    "folder-favorites": folder_with("star"),
    "folder-locked": folder_with("locked"),
    "folder-applications": folder_with("applications"),
    "folder-fonts": folder_with("letter"),
    "folder-system": folder_with("gear"),
    "user-home": folder_with("home"),
    "user-desktop": folder_with("desktop"),
}
