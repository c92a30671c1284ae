// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>

#include <sys/types.h>

/// An X server of a test's own, without a screen (Xvfb). The destructor ends it.
class VirtualDisplay {
public:
    VirtualDisplay();
    VirtualDisplay(const VirtualDisplay &) = delete;
    VirtualDisplay &operator=(const VirtualDisplay &) = delete;
    ~VirtualDisplay();

    /// The value for DISPLAY, ":7"; empty if the server could not be started.
    [[nodiscard]] const std::string &name() const { return name_; }

private:
    pid_t server_ = -1;
    std::string name_;
};
