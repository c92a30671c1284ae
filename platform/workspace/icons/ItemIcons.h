// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconSources.h"

#include <cstdint>

#include <QByteArray>

namespace MWCore {

struct FoundIcon {
    OSStatus status = noErr; ///< of examining the item
    bool isLocked = false;   ///< the item itself, even if it is a link
    IconRef icon;
};

/// GetIconRefFromFileInfo() for the item at @p path, without the cost of a reference.
/// @p unflaggedState as for iconForFile().
[[nodiscard]] FoundIcon findItemIcon(const QByteArray &path, ItemRole role = ItemRole::Shown,
                                     uint64_t unflaggedState = 0);

} // namespace MWCore
