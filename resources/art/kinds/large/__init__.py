# SPDX-License-Identifier: MIT
"""The kinds at 128 points."""
from large import devices, documents, folders, signs

DRAWINGS = {**folders.DRAWINGS, **devices.DRAWINGS, **documents.DRAWINGS, **signs.DRAWINGS}
