// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>
#include <termios.h>

/// A terminal of 80 x 24 characters of 10 x 20 pixels, on which a command runs as the leader of its
/// session, and which this process plays.
class ScriptedTerminal {
public:
    /// Once the output contains `output` (after that of the rows before), `reply` is called.
    struct Row {
        std::string output;
        std::function<void(ScriptedTerminal &)> reply;
    };

    ScriptedTerminal();
    ScriptedTerminal(const ScriptedTerminal &) = delete;
    ScriptedTerminal &operator=(const ScriptedTerminal &) = delete;
    ~ScriptedTerminal();

    /// Runs @p command to its end: its exit status, or 128 + the signal that ended it.
    int run(std::vector<std::string> command, const std::vector<Row> &script,
            const char *type = "xterm");

    /// What the user types, or the terminal answers.
    void type(const std::string &text) const;
    void hangUp();
    [[nodiscard]] pid_t process() const { return process_; }

    /// What the command has written, with "\r\n" for the end of a line.
    [[nodiscard]] const std::string &output() const { return output_; }

    /// Whether lines are edited and shown as they were before.
    [[nodiscard]] bool isRestored() const;

    /// What was typed and nobody has read.
    [[nodiscard]] std::string unread() const;

private:
    bool readMore();

    int terminal_ = -1; ///< this side
    int line_ = -1;     ///< the command's side
    termios before_ = {};
    pid_t process_ = -1;
    int processDescriptor_ = -1; ///< readable once the process has ended
    std::string output_;
};
