// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "LiveLine.h"

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

LiveLine::LiveLine() : isSeen_(isatty(STDERR_FILENO) && !isDumb()) {}

void LiveLine::show(std::string text) {
    if (!isSeen_ || text == shown_)
        return;
    constexpr int kUsualColumns = 80;
    const int columns = terminalColumns(STDERR_FILENO).value_or(kUsualColumns);
    text.resize(std::min(text.size(), static_cast<std::size_t>(columns - 1))); // or it would wrap
    std::fprintf(stderr, "\r%s\033[K", text.c_str());
    shown_ = std::move(text);
}

} // namespace MWCore::mwfile
