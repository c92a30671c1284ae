// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "apps/mwfile/commands.h"
#include "core/mfs_fso.h"

#include <vector>

namespace MWCore::mwfile {

using Items = std::vector<const mfs_fso *>;

/// Sorts, stably: names from A to Z without regard to case, oldest, smallest and least accessible
/// first. Folders count as empty.
void sort(Items &items, Order order);

} // namespace MWCore::mwfile
