// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"

#include <gtest/gtest.h>

namespace {

TEST(Perm, ReadsNumberTextAndMode) {
    struct Row {
        const char *value;
        const char *number;
        const char *text;
        const char *mode;
    };
    constexpr Row rows[] = {
        {"755", "755", "rwxr-xr-x", "0755"},        {"55", "55", "---r-xr-x", "0055"},
        {"7", "700", "rwx------", "0700"},          {"0", "0", "---------", "0000"},
        {"rwxr-x---", "750", "rwxr-x---", "0750"},  {"-------rwx", "7", "------rwx", "0007"},
        {"-rwxr-xr-x", "755", "rwxr-xr-x", "0755"}, {"drwx------", "700", "rwx------", "0700"},
        {"0007", "7", "------rwx", "0007"},         {"04755", "755", "rwxr-xr-x", "04755"},
        {"000", "0", "---------", "0000"},          {"---------", "0", "---------", "0000"},
    };
    for (const Row &row : rows) {
        const std::vector<std::string> lines = linesOf(mwfile({"perm", row.value}).output);
        ASSERT_EQ(lines.size(), 7U) << row.value;
        EXPECT_EQ(lines[0], std::string("Number   ") + row.number);
        EXPECT_EQ(lines[1], std::string("Text     ") + row.text);
        EXPECT_EQ(lines[2], std::string("Mode     ") + row.mode);
    }
    EXPECT_TRUE(mwfile({"perm", "-rwxr-----"})
                    .output.ends_with("Owner    read, write, execute\nGroup    read\n"
                                      "Others   none\nSpecial  none\n"));
    EXPECT_EQ(readJson(mwfile({"perm", "--json", "06751"}).output, "list(d.values())"),
              "[751, 'rwxr-x--x', '06751', True, True, False]");
}

TEST(Perm, RejectsInvalidValues) {
    for (const char *const value :
         {"", "8", "758", "4755", "1755", "010000", "rwsr-xr-x", "xwrxwrxwr", "qrwxr-xr-x", "-1",
          "0x1ff", "rwx", "--", "-x", "drwxr-xr-xx"}) {
        const ProcessResult result = mwfile({"perm", value});
        EXPECT_EQ(result.status, 2) << value;
        EXPECT_EQ(result.output, "") << value;
        EXPECT_EQ(linesOf(result.errorOutput).size(), 1U) << result.errorOutput;
    }
}

} // namespace
