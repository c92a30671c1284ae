// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXPermission.h"

#include <gtest/gtest.h>

namespace {

using MWCore::MXPermission;

TEST(Permission, ReadsNumbersAndTexts) {
    struct Row {
        const char *what;
        MXPermission::Ptr permission;
        int number;
        const char *text;
    };
    const Row rows[] = {
        {"three digits", MXPermission::initWithNumber(644), 644, "rw-r--r--"},
        {"one digit is the owner's", MXPermission::initWithNumber(7), 700, "rwx------"},
        {"nothing", MXPermission::initWithNumber(0), 0, "---"},
        {"a listing's text", MXPermission::initWithString("-rwxr-x---"), 750, "rwxr-x---"},
        {"nine characters are too few", MXPermission::initWithString("rwxr-xr-x"), 1, "--x"},
        {"beyond ASCII", MXPermission::initWithString("\xC3\xA4rwxr-x---"), 750, "rwxr-x---"},
        {"nine of those", MXPermission::initWithString("\xC3\xA4rwxr-x--"), 1, "--x"},
        {"null", MXPermission::initWithString({}), 1, "--x"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(row.permission->intValue(), row.number) << row.what;
        EXPECT_EQ(row.permission->numberValue().toInt(), row.number) << row.what;
        EXPECT_EQ(row.permission->stringValue(), row.text) << row.what;
    }
}

using Toggle = void (MXPermission::*)();
using Query = bool (MXPermission::*)() const;
struct FlagRow {
    Toggle toggle;
    Query query;
    int number; ///< of the flag; 0 if numbers do not include it
};
const FlagRow kFlagRows[] = {
    {&MXPermission::toggleUserRead, &MXPermission::userCanRead, 400},
    {&MXPermission::toggleUserWrite, &MXPermission::userCanWrite, 200},
    {&MXPermission::toggleUserExecute, &MXPermission::userCanExecute, 100},
    {&MXPermission::toggleGroupRead, &MXPermission::groupCanRead, 40},
    {&MXPermission::toggleGroupWrite, &MXPermission::groupCanWrite, 20},
    {&MXPermission::toggleGroupExecute, &MXPermission::groupCanExecute, 10},
    {&MXPermission::toggleWorldRead, &MXPermission::worldCanRead, 4},
    {&MXPermission::toggleWorldWrite, &MXPermission::worldCanWrite, 2},
    {&MXPermission::toggleWorldExecute, &MXPermission::worldCanExecute, 1},
    {&MXPermission::toggleStickyBit, &MXPermission::hasStickyBit, 0},
    {&MXPermission::toggleSuidBit, &MXPermission::hasSuidBit, 0},
    {&MXPermission::toggleSgidBit, &MXPermission::hasSgidBit, 0},
};

TEST(Permission, FlagsAreIndependent) {
    for (const FlagRow &row : kFlagRows) {
        const auto permission = MXPermission::initWithNumber(0);
        ((*permission).*row.toggle)();
        EXPECT_EQ(permission->intValue(), row.number);
        for (const FlagRow &other : kFlagRows)
            EXPECT_EQ(((*permission).*other.query)(), &other == &row) << row.number;
        ((*permission).*row.toggle)();
        EXPECT_FALSE(((*permission).*row.query)());
    }
}

TEST(Permission, ACopyHasEveryBitAndIsIndependent) {
    const auto permission = MXPermission::initWithNumber(754);
    permission->toggleSuidBit();
    permission->toggleStickyBit();
    const auto copy = permission->copy();
    EXPECT_TRUE(copy->hasSuidBit() && copy->hasStickyBit() && !copy->hasSgidBit());
    permission->toggleUserRead();
    permission->toggleSuidBit();
    EXPECT_EQ(copy->intValue(), 754);
    EXPECT_TRUE(copy->hasSuidBit());
    permission->toggleSgidBit();
    EXPECT_TRUE(permission->copy()->hasSgidBit());
}

} // namespace
