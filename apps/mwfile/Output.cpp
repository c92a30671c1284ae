// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/Output.h"

#include "apps/mwfile/DisplayText.h"
#include "apps/mwfile/Failure.h"

#include <cerrno>
#include <cstdio>

namespace MWCore::mwfile {

void print(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        throw Failure("standard output", errno);
}

void finishOutput() {
    if (std::fflush(stdout) != 0)
        throw Failure("standard output", errno);
}

void complain(std::string_view message) {
    const DisplayText line(message, Backslash::Plain);
    std::fprintf(stderr, "mwfile: %s\n", line.text().c_str());
}

} // namespace MWCore::mwfile
