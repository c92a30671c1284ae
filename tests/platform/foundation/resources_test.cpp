// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/FrameworkResources.h"

#include <gtest/gtest.h>

namespace {

namespace FrameworkResources = MWCore::FrameworkResources;

TEST(FrameworkResources, AreFoundByNameAndType) {
    const struct Row {
        const char *name;
        const char *type;
        const char *path;
    } rows[] = {
        {"table", "txt", ":/mwcore/table.txt"},
        {"table", "", ":/mwcore/table"},
        {"table.txt", "", ":/mwcore/table.txt"},
        {"table", "png", ""},
        {"Table", "txt", ""},
        {"", "", ""},
        {"", "txt", ""},
        {".", "", ""},
        {".", ".", ""},
        {"..", "", ""},
        {"folder", "", ""},
        {"folder/inside", "txt", ""},
        {"../outside", "txt", ""},
        {"/mwcore/table", "txt", ""},
        {"table", "txt/../table.txt", ""},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(FrameworkResources::path(row.name, row.type), row.path) << row.name;
        EXPECT_EQ(FrameworkResources::data(row.name, row.type).has_value(), *row.path != '\0')
            << row.name;
    }
    EXPECT_EQ(FrameworkResources::data("table", "txt"), "contents\n");
    EXPECT_EQ(FrameworkResources::data("table", ""), "");
}

} // namespace
