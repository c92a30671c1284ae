// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconSources.h"

namespace MWCore {

/// Replaces @p icon by that of the final target of an alias file. Changes nothing if it is no alias
/// file, or its target is not found within some milliseconds. Any thread.
void addTargetIcon(const IconItem &item, IconRef &icon);

} // namespace MWCore
