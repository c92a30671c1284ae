// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <string_view>

#include <QString>

namespace MWCore::mwfile {

/// A character of a text, or a byte that is not valid UTF-8.
struct TextStep {
    std::string_view bytes;
    char32_t character; ///< for an invalid byte, that byte
    bool valid;
};

/// Reads a text, which may have any bytes, character by character.
class TextReader {
public:
    /// @p text must outlive the steps.
    explicit TextReader(std::string_view text);

    /// nullopt at the end.
    [[nodiscard]] std::optional<TextStep> next();

private:
    std::string_view rest_;
    QString units_; ///< the whole text in UTF-16
    qsizetype index_ = 0;
};

/// Whether a terminal may interpret the character instead of showing it: control characters, and
/// marks that change the writing direction or break the line.
[[nodiscard]] bool isControl(char32_t character);

} // namespace MWCore::mwfile
