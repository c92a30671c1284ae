// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "RawTerminal.h"
#include "TerminalAnswers.h"

#include <chrono>
#include <string_view>

namespace MWCore::mwfile {

/// Questions to the terminal of this process. The destructor waits for answers that are late, for a
/// second at most, so that the shell does not take them for typed text.
class TerminalDialogue {
public:
    TerminalDialogue() = default;
    TerminalDialogue(const TerminalDialogue &) = delete;
    TerminalDialogue &operator=(const TerminalDialogue &) = delete;
    ~TerminalDialogue();

    /// Whether nothing was typed that would be lost.
    [[nodiscard]] bool canAsk() const;

    /// Sends @p requests and waits for the answers. False if the terminal does not answer in time.
    [[nodiscard]] bool ask(std::string_view requests);

    [[nodiscard]] const TerminalAnswers &answers() const { return answers_; }

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool send(std::string_view bytes) const;
    bool receiveUntil(Clock::time_point end);

    RawTerminal terminal_;
    TerminalAnswers answers_;
    int askedCount_ = 0;
    Clock::time_point lastAsked_;
};

} // namespace MWCore::mwfile
