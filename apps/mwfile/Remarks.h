// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "Catalogue.h"
#include "Colours.h"

namespace MWCore::mwfile {

/// Where a link or alias leads, with @p target in the end: "-> /usr/share". Empty for anything
/// else.
[[nodiscard]] std::string arrow(const MXFileSystemObject &item,
                                const std::optional<std::string> &target, const Colours &colours);

/// What nothing else in a row tells: "(application, Red, locked)". Empty for most items.
[[nodiscard]] std::string remarks(const MXFileSystemObject &item, const ItemMetadata &metadata,
                                  const Colours &colours);

} // namespace MWCore::mwfile
