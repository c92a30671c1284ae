// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/ItemIcon.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace MWCore;

ItemIcon::Ptr iconOf(const std::string &path, IconBadge badge = IconBadge::None) {
    return iconForFile(QByteArray::fromStdString(path), badge);
}

TEST(IconDescriptions, ThoseOfAKindAreOneObject) {
    const TemporaryFolder folder;
    const auto first = iconOf(folder.file("a.png"));
    const auto locked = iconOf(folder.file("b.png"), IconBadge::Locked);
    const auto other = iconOf(folder.file("c.txt"));
    EXPECT_EQ(&first->description(), &locked->description());
    EXPECT_NE(first->description(), other->description());
}

TEST(IconDescriptions, EqualHashesAreNotEqualIcons) {
    const auto iconNamed = [](const char *first, const char *second) {
        IconRef icon;
        icon.themeNames = {first, second};
        return ItemIcon::init(icon);
    };
    const auto one = iconNamed("folder", "a");
    const auto other = iconNamed("folder", "b");
    EXPECT_EQ(one->description().themeNames.back(), "a");
    EXPECT_EQ(other->description().themeNames.back(), "b");
}

} // namespace
