// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/MXFileSystemObject.h>

#include <string>
#include <string_view>

namespace MWCore::mwfile {

/// Colours what a person sees: on a terminal that is not "dumb", unless NO_COLOR is set and not
/// empty (no-color.org).
class Colours {
public:
    Colours();

    /// @p text in the colour of the item's kind, or as it is.
    [[nodiscard]] std::string name(const MXFileSystemObject &item, std::string_view text) const;

    /// @p text held back beside what matters more, or as it is.
    [[nodiscard]] std::string quiet(std::string_view text) const;

    /// What goes before a label's name: a dot in its colour, "● "; nothing without colours.
    [[nodiscard]] std::string dot(const MXLabel &label) const;

private:
    [[nodiscard]] std::string dressed(std::string_view attributes, std::string_view text) const;

    bool on_;
};

/// Columns that a text takes on a terminal, dressed or not.
[[nodiscard]] int columnsOf(std::string_view text);

} // namespace MWCore::mwfile
