// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "apps/mwfile/Catalogue.h"
#include "apps/mwfile/Colours.h"

namespace MWCore::mwfile {

/// Where a link or alias leads, with @p target in the end: "-> /usr/share". Empty for anything
/// else.
[[nodiscard]] std::string arrow(const MXFileSystemObject &item,
                                const std::optional<std::string> &target, const Colours &colours);

/// What nothing else in a row tells: "(application, Red, locked)". Empty for most items.
[[nodiscard]] std::string remarks(const MXFileSystemObject &item, const Marks &marks,
                                  const Colours &colours);

} // namespace MWCore::mwfile
