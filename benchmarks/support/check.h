// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>
#include <system_error>

/// Throws what `errno` says about @p what unless it was @p done.
inline void check(bool done, const char *what) {
    if (!done)
        throw std::system_error(errno, std::generic_category(), what);
}
