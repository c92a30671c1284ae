// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/item/VisibleIcons.h"

#include "tests/model/items.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>

#include <QImage>

namespace {

using namespace MWCore;

/// A file whose drawings succeed or fail as the test says.
class VisibleIconsTest : public ::testing::Test {
protected:
    /// Shows the file again, and returns how many times its icon is requested.
    int show(const HeldIconImage &drawn) {
        icons_.setItems({file_}, {});
        int count = 0;
        for (const IconRequest &request : icons_.missing()) {
            count += request.item.isLocal ? 1 : 0; // else a placeholder
            IconResult result;
            result.ticket = request.ticket;
            result.icon = genericIcon(ItemIconFacts::Kind::File);
            result.image = drawn;
            result.theme = lastKnownTheme();
            (void)icons_.apply({result});
        }
        return count;
    }

    TemporaryFolder folder_;
    MXFileSystemObject::Ptr file_ = itemAt(folder_.write("a.txt", ""));
    VisibleIcons icons_;
    HeldIconImage image_ = std::make_shared<const QImage>(128, 128, QImage::Format_RGB32);
};

TEST_F(VisibleIconsTest, RequestAgainWhatCouldNotBeDrawn) {
    EXPECT_EQ(show(nullptr), 1);
    EXPECT_EQ(show(image_), 1);
    EXPECT_EQ(show(nullptr), 0);
    EXPECT_EQ(icons_.image(*file_).cacheKey(), image_->cacheKey());
}

TEST_F(VisibleIconsTest, DoNotRequestForEverWhatCannotBeDrawn) {
    int count = 0;
    for (int turn = 0; turn < 10; ++turn)
        count += show(nullptr);
    EXPECT_GT(count, 1);
    EXPECT_LT(count, 5);
    EXPECT_FALSE(icons_.image(*file_).isNull()) << "a placeholder";
    icons_.forget(*file_);
    EXPECT_EQ(show(image_), 1);
}

} // namespace
