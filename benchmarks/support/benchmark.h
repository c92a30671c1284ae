// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdio>
#include <exception>

/// Runs a benchmark and returns its exit status; prints the cause if @p work throws.
template <typename Work> int runBenchmark(const char *name, Work work) {
    try {
        work();
        return 0;
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "%s: %s\n", name, failure.what());
        return 1;
    }
}
