// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/MXFileSystemObject.h>

#include <string>
#include <string_view>

namespace MWCore::mwfile {

/// Colours the output if it goes to a terminal that is not "dumb", unless NO_COLOR is set and not
/// empty (no-color.org).
class Colours {
public:
    Colours();

    /// @p text in the colour of the item's kind.
    [[nodiscard]] std::string name(const MXFileSystemObject &item, std::string_view text) const;

    /// @p text dimmed, for what matters less.
    [[nodiscard]] std::string dimmed(std::string_view text) const;

    /// @p text in the colour of what is wrong.
    [[nodiscard]] std::string problem(std::string_view text) const;

    /// A dot in the label's colour, "● ", to precede its name; empty without colours.
    [[nodiscard]] std::string dot(const MXLabel &label) const;

private:
    [[nodiscard]] std::string styled(std::string_view attributes, std::string_view text) const;

    bool on_;
};

/// The columns that a text takes on a terminal, styled or not.
[[nodiscard]] int columnsOf(std::string_view text);

} // namespace MWCore::mwfile
