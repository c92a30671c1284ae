// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "StatusLine.h"

#include "Output.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <unistd.h>

namespace MWCore::mwfile {
namespace {

bool isDumb() {
    const char *const terminal = std::getenv("TERM");
    return !terminal || std::string_view(terminal) == "dumb";
}

} // namespace

StatusLine::StatusLine() : isVisible_(isatty(STDERR_FILENO) && !isDumb()) {}

void StatusLine::show(std::string text) {
    if (!isVisible_ || text == shown_)
        return;
    constexpr int kUsualColumns = 80;
    const int columns = terminalColumns(STDERR_FILENO).value_or(kUsualColumns);
    text.resize(
        std::min(text.size(), static_cast<std::size_t>(columns - 1))); // so that it does not wrap
    std::fprintf(stderr, "\r%s\033[K", text.c_str());
    shown_ = std::move(text);
}

} // namespace MWCore::mwfile
