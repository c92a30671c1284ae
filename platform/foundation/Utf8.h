// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string_view>

namespace MWCore {

/// One step through text that may contain invalid UTF-8.
struct Utf8Step {
    std::string_view bytes; ///< one whole character, or one invalid byte
    char32_t character;     ///< the character; for an invalid byte, that byte
    bool valid;
};

/// The first step of @p text, which must not be empty. Overlong forms, surrogates and characters
/// above U+10FFFF are invalid (RFC 3629).
[[nodiscard]] Utf8Step nextStep(std::string_view text);

} // namespace MWCore
