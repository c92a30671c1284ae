// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/TemporaryFolder.h"
#include "tests/support/texts.h"

#include <gtest/gtest.h>

extern "C" int count_by_iteration(const char *path);

namespace {

TEST(CInterface, ListsAFolderFromC) {
    const Trace quiet;
    const TemporaryFolder folder;
    folder.file("a");
    folder.folder("b");
    folder.link("c", "a");
    EXPECT_EQ(count_by_iteration(folder.path().c_str()), 3);
    EXPECT_EQ(count_by_iteration(folder.at("missing").c_str()), -1);
}

} // namespace
