// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/ItemPlace.h"

namespace MWCore {

/// Makes an empty file, which everybody may read and write but for what the process's mask takes
/// away. dupFNErr when something is there, be it a link that leads nowhere.
[[nodiscard]] OSStatus makeEmptyFile(const ItemPlace &place);

} // namespace MWCore
