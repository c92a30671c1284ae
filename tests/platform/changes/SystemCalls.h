// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <string>

/// Intercepts, for its lifetime, every call from the library to libc that looks up, reads or
/// changes something. One at a time.
struct SystemCalls {
    /// Called before every call ("openat", "lsetxattr", "renameat2 with flags") except those that
    /// it makes itself. Returns the `errno` value with which the call fails, or 0 to let it
    /// through.
    using Before = std::function<int(const std::string &call)>;

    explicit SystemCalls(Before before);
    SystemCalls(const SystemCalls &) = delete;
    SystemCalls &operator=(const SystemCalls &) = delete;
    ~SystemCalls();

    /// Makes every call of that name fail.
    static Before refusing(const std::string &name, int error) {
        return [=](const std::string &call) { return call == name ? error : 0; };
    }
};
