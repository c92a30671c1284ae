// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <array>
#include <csignal>

#include <termios.h>

namespace MWCore::mwfile {

/// The terminal of this process, which neither shows nor edits what it receives as long as this
/// exists. The destructor restores it, and so does a signal that ends or stops the process. One at
/// a time.
class RawTerminal {
public:
    RawTerminal();
    RawTerminal(const RawTerminal &) = delete;
    RawTerminal &operator=(const RawTerminal &) = delete;
    ~RawTerminal();

    /// Whether there is a terminal and it could be set up.
    [[nodiscard]] bool isOpen() const { return isOpen_; }

    /// For reading and writing.
    [[nodiscard]] int descriptor() const { return descriptor_; }

    /// Discards what arrives until the terminal is restored and was not read.
    void discardRest() { restoring_ = TCSAFLUSH; }

private:
    static constexpr std::array kSignals = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};

    [[nodiscard]] bool makeRaw() const;
    void handleSignals();

    int descriptor_;
    bool isOpen_ = false;
    int restoring_ = TCSANOW;
    std::array<struct sigaction, kSignals.size()> actionsBefore_ = {};
};

} // namespace MWCore::mwfile
