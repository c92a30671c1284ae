// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"

#include <gtest/gtest.h>

namespace {

TEST(Usage, WhatMeansNothingIsOneLineAndStatusTwo) {
    const std::vector<std::string> commands[] = {
        {},
        {"nonsense"},
        {"list"},
        {"list", "/", "/usr"},
        {"list", "--sort", "colour", "/"},
        {"list", "--sort"},
        {"list", "--unknown", "/"},
        {"info"},
        {"perm"},
        {"perm", "755", "644"},
        {"perm", "755", "--unknown"},
        {"\x1b[31m"},
        {"list", "--\x1b[31m", "/"},
    };
    for (const std::vector<std::string> &command : commands) {
        const ProcessResult result = mwfile(command);
        SCOPED_TRACE(result.complaints);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(linesOf(result.complaints).size(), 1U);
        EXPECT_EQ(result.complaints.find('\x1b'), std::string::npos);
    }
}

TEST(Usage, TraceShowsTheLibrarysOwnLines) {
    EXPECT_EQ(mwfile({"--trace", "list", "/missing"}).complaints,
              "\t\tError getting item statistics\n"
              "\t\terror : No such file or directory\n"
              "mwfile: /missing: No such file or directory\n");
}

} // namespace
