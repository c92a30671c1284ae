// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"

#include <string>
#include <string_view>

namespace MWCore::mwfile {

/// Colours names by kind, where a person sees them: on a terminal that is not "dumb", unless
/// NO_COLOR is set and not empty (no-color.org).
class Colours {
public:
    Colours();

    /// @p text in the colour of the item's kind, or as it is.
    [[nodiscard]] std::string name(const mfs_fso &item, std::string_view text) const;

    /// @p text held back beside what matters more, or as it is.
    [[nodiscard]] std::string quiet(std::string_view text) const;

private:
    [[nodiscard]] std::string dressed(std::string_view attributes, std::string_view text) const;

    bool on_;
};

} // namespace MWCore::mwfile
