// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>

namespace MWCore::mwfile {

/// A line that changes while something takes its time, on the terminal that standard error leads
/// to; nothing where there is none, or one that is "dumb". Gone when this goes.
class LiveLine {
public:
    LiveLine();
    LiveLine(const LiveLine &) = delete;
    LiveLine &operator=(const LiveLine &) = delete;
    ~LiveLine() { show(""); }

    [[nodiscard]] bool isSeen() const { return isSeen_; }

    /// In place of what is shown. @p text is of ASCII; what is wider than the terminal is cut off.
    void show(std::string text);

private:
    bool isSeen_;
    std::string shown_;
};

} // namespace MWCore::mwfile
