// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconSources.h"

#include <QByteArray>

namespace MWCore {

/// GetIconRefFromFileInfo() for the item at @p path, without the cost of a reference.
[[nodiscard]] OSStatus findItemIcon(const QByteArray &path, IconRef *icon,
                                    ItemRole role = ItemRole::Shown);

} // namespace MWCore
