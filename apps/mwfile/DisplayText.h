// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>
#include <string_view>

namespace MWCore::mwfile {

/// Whether a backslash is doubled, to distinguish it from an escape, or printed as it is.
enum class Backslash { Doubled, Plain };

/// A text that is safe to print on a terminal: control characters become \n, \t, \e or \u{...},
/// invalid UTF-8 bytes \xNN.
class DisplayText {
public:
    explicit DisplayText(std::string_view raw, Backslash backslash = Backslash::Doubled);

    [[nodiscard]] const std::string &text() const { return text_; }

    /// The columns that it takes on a terminal: two for a wide character, none for a combining one.
    [[nodiscard]] int columns() const { return columns_; }

private:
    void append(std::string_view printable, int columns);

    std::string text_;
    int columns_ = 0;
};

} // namespace MWCore::mwfile
