// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>
#include <string_view>

namespace MWCore::mwfile {

/// Whether a backslash stands for itself or, doubled, is told apart from an escape.
enum class Backslash { Doubled, Plain };

/// A text made fit for a terminal: control characters as \n, \t, \e or \u{...}, bytes that are no
/// UTF-8 as \xNN.
class DisplayText {
public:
    explicit DisplayText(std::string_view raw, Backslash backslash = Backslash::Doubled);

    [[nodiscard]] const std::string &text() const { return text_; }

    /// Columns that it takes on a terminal: two for a wide character, none for a combining one.
    [[nodiscard]] int columns() const { return columns_; }

private:
    void append(std::string_view printable, int columns);

    std::string text_;
    int columns_ = 0;
};

} // namespace MWCore::mwfile
