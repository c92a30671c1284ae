// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/IconTheme.h>

#include <cstdint>
#include <memory>

namespace MWCore {

/// A theme of the user, with a number that is greater for every later theme.
struct NumberedTheme {
    std::shared_ptr<const IconTheme> theme; ///< null: not known yet
    uint64_t number = 0;
};

/// IconTheme::current(), which may read files. Any thread.
[[nodiscard]] NumberedTheme currentTheme();

/// What currentTheme() has returned last. Never waits for files. Any thread.
[[nodiscard]] NumberedTheme lastKnownTheme();

} // namespace MWCore
