// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>

#include <sys/types.h>

/// A session bus of a test's own. The services that it starts have the environment of the
/// constructor's caller. The destructor ends it.
class SessionBus {
public:
    SessionBus();
    SessionBus(const SessionBus &) = delete;
    SessionBus &operator=(const SessionBus &) = delete;
    ~SessionBus();

    /// The value for DBUS_SESSION_BUS_ADDRESS; empty if the bus could not be started.
    [[nodiscard]] const std::string &address() const { return address_; }

    [[nodiscard]] pid_t process() const { return process_; }

    /// The process of the service @p name on the bus that the environment names; -1 if there is
    /// none.
    [[nodiscard]] static pid_t processOf(const std::string &name);

private:
    pid_t process_ = -1;
    std::string address_;
};
