// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "Colours.h"
#include "ShownMetadata.h"

namespace MWCore::mwfile {

/// The final target @p target of a link or alias: "-> /usr/share". Empty for other items.
[[nodiscard]] std::string targetAnnotation(const MXFileSystemObject &item,
                                           const std::optional<std::string> &target,
                                           const Colours &colours);

/// Properties that no column of a row shows: "(application, Red, locked)". Empty for most items.
[[nodiscard]] std::string annotations(const MXFileSystemObject &item, const ItemMetadata &metadata,
                                      const Colours &colours);

} // namespace MWCore::mwfile
