// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <MWCore/ItemIcon.h>

#include <vector>

#include <QString>

struct SheetItem {
    QString label;
    MWCore::ItemIcon::Ptr icon;
};

/// Makes an item of every kind in the folder, which is to be the home folder, and in its folders.
void makeItems(const TemporaryFolder &home);

/// Those items, and the root folder, a device and remote items.
[[nodiscard]] std::vector<SheetItem> sheetItems(const TemporaryFolder &home);
