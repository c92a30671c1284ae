// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconSources.h"

#include <QByteArray>

namespace MWCore {

/// GetIconRefFromFileInfo() for the item at @p path, without the cost of a reference. Sets
/// @p isLocked, which may be null, to whether that item itself is locked.
[[nodiscard]] OSStatus findItemIcon(const QByteArray &path, IconRef *icon,
                                    ItemRole role = ItemRole::Shown, bool *isLocked = nullptr);

} // namespace MWCore
