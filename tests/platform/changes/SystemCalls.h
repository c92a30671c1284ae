// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <string>

/// Stands between the library and libc in this program: sees each call by which something is looked
/// up, read or changed, before it is made. Everything is as libc does it until a test says
/// otherwise, and again once this goes. One at a time.
struct SystemCalls {
    /// Is told of every call ("openat", "lsetxattr"; "renameat2 with flags") but those that it
    /// makes itself. What it returns is the `errno` value with which the call fails; 0 lets it be
    /// made.
    using Before = std::function<int(const std::string &call)>;

    explicit SystemCalls(Before before);
    SystemCalls(const SystemCalls &) = delete;
    SystemCalls &operator=(const SystemCalls &) = delete;
    ~SystemCalls();

    /// Fails every call of the name.
    static Before refusing(const std::string &name, int error) {
        return [=](const std::string &call) { return call == name ? error : 0; };
    }
};
