// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "tests/icon_sheet/SheetItems.h"

#include <vector>

#include <QImage>

struct SheetLayout {
    int points = 48; ///< the size of the icons
    qreal scale = 1;
    int columns = 15;
};

/// The icons with their labels, over a light and below over a dark background.
[[nodiscard]] QImage sheet(const std::vector<SheetItem> &items, const SheetLayout &layout);
