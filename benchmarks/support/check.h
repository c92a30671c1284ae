// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>
#include <system_error>

/// Throws a std::system_error for @p what with the value of `errno` unless the call @p succeeded.
inline void check(bool succeeded, const char *what) {
    if (!succeeded)
        throw std::system_error(errno, std::generic_category(), what);
}
