// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

/// Throws a std::system_error for @p what with the value of `errno` unless the call @p succeeded.
inline void check(bool succeeded, const char *what) {
    if (!succeeded)
        throw std::system_error(errno, std::generic_category(), what);
}

/// Throws a std::runtime_error with the text @p otherwise unless @p holds.
inline void require(bool holds, std::string_view otherwise) {
    if (!holds)
        throw std::runtime_error(std::string(otherwise));
}
