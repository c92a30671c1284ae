// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <string_view>

namespace MWCore {

/// One step through a text of any bytes.
struct Utf8Step {
    std::string_view bytes; ///< what the step covers: a whole character, or one invalid byte
    char32_t character;     ///< the character; for an invalid byte, that byte
    bool valid;
};

/// The first step of @p text, which is not empty. Overlong forms, surrogates and what lies above
/// U+10FFFF are invalid (RFC 3629).
[[nodiscard]] MWCORE_EXPORT Utf8Step nextStep(std::string_view text);

/// Whether a terminal would obey the character instead of showing it: controls, and marks that
/// turn the writing direction or break the line.
[[nodiscard]] MWCORE_EXPORT bool isControl(char32_t character);

} // namespace MWCore
