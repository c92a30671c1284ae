// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>

namespace MWCore::mwfile {

/// A changing line of progress on standard error. Shown only if that is a terminal that is not
/// "dumb"; the destructor removes it.
class StatusLine {
public:
    StatusLine();
    StatusLine(const StatusLine &) = delete;
    StatusLine &operator=(const StatusLine &) = delete;
    ~StatusLine() { show(""); }

    [[nodiscard]] bool isVisible() const { return isVisible_; }

    /// Replaces the line by @p text (ASCII), truncated to the width of the terminal.
    void show(std::string text);

private:
    bool isVisible_;
    std::string shown_;
};

} // namespace MWCore::mwfile
