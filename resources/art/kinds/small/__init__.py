# SPDX-License-Identifier: MIT
"""The kinds at 16 and 24 points."""
from small import devices, documents, folders, signs

DRAWINGS = {**folders.DRAWINGS, **devices.DRAWINGS, **documents.DRAWINGS, **signs.DRAWINGS}
