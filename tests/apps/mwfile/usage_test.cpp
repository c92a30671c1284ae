// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/xattr.h>

namespace {

TEST(Usage, ErrorsPrintOneLineAndReturnTwo) {
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
        SCOPED_TRACE(result.errorOutput);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(linesOf(result.errorOutput).size(), 1U);
        EXPECT_EQ(result.errorOutput.find('\x1b'), std::string::npos);
    }
}

TEST(Usage, TraceShowsTraceLines) {
    EXPECT_EQ(mwfile({"--trace", "list", "/missing"}).errorOutput,
              "\t\tError getting item statistics\n"
              "\t\terror : No such file or directory\n"
              "mwfile: /missing: no such file or folder\n");
}

TEST(Usage, OnlyTraceShowsTheLog) {
    const TemporaryFolder folder;
    const std::string file = folder.file("f");
    ASSERT_EQ(mwfile({"type", file, "TEXT"}).errorOutput, "");
    std::string other(60, '\0'); // AFP information with another type
    other.replace(0, 8, std::string("AFP\0\0\0\1\0", 8)).replace(16, 4, "PICT");
    ASSERT_EQ(setxattr(file.c_str(), "user.AFP_AfpInfo", other.data(), other.size(), 0), 0);
    for (const char *const command : {"list", "info"}) {
        const std::string path = command == std::string("list") ? folder.path() : file;
        EXPECT_EQ(mwfile({command, path}).errorOutput, "");
        EXPECT_NE(mwfile({"--trace", command, path}).errorOutput.find("mwcore"), std::string::npos);
    }
}

} // namespace
