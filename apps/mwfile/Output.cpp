// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "Output.h"

#include "DisplayText.h"
#include "Failure.h"

#include <cerrno>
#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

namespace MWCore::mwfile {

void print(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        throw Failure("standard output", errno);
}

bool printsToTerminal() {
    return isatty(STDOUT_FILENO) != 0;
}

std::optional<int> terminalColumns(int descriptor) {
    winsize size = {};
    const bool isKnown = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? std::optional<int>(size.ws_col) : std::nullopt;
}

void finishOutput() {
    if (std::fflush(stdout) != 0)
        throw Failure("standard output", errno);
}

void printError(std::string_view message) {
    const DisplayText line(message, Backslash::Plain);
    std::fprintf(stderr, "mwfile: %s\n", line.text().c_str());
}

} // namespace MWCore::mwfile
