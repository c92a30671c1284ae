// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/ItemIcon.h"
#include "platform/workspace/themes/IconTheme.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include <QColor>
#include <QImage>

namespace {

using namespace MWCore;

/// A theme in which images of all types have the same icon, and sounds a damaged one.
class ImagesInUse : public ::testing::Test {
protected:
    ImagesInUse() {
        for (const char *const variable : {"HOME", "XDG_DATA_HOME"})
            setenv(variable, folder_.path().c_str(), 1);
        (void)folder_.write("icons/T/index.theme",
                            "[Icon Theme]\nName=T\nDirectories=a\n[a]\nSize=128\n");
        (void)folder_.write("icons/T/a/damaged.png", "\x89PNG\r\n\x1a\n");
        QImage image(128, 128, QImage::Format_RGBA8888);
        image.fill(Qt::red);
        EXPECT_TRUE(
            image.save(QString::fromStdString(folder_.at("icons/T/a/image-x-generic.png"))));
        IconTheme::setCurrentName("T");
    }

    static ItemIcon::Ptr icon(const QStringList &names, const char *drawing = "generic-file",
                              IconBadge badge = IconBadge::None) {
        IconRef description;
        description.themeNames = names;
        description.drawing = QString::fromLatin1(drawing);
        return ItemIcon::init(description, badge);
    }

    TemporaryFolder folder_;
};

TEST_F(ImagesInUse, TypesThatAreDrawnAlikeShareOne) {
    const QImage one = icon({"image-a", "image-x-generic"})->image();
    const QImage other = icon({"image-b", "image-x-generic"})->image();
    EXPECT_EQ(one.pixelColor(64, 64), QColor(Qt::red));
    EXPECT_EQ(one.constBits(), other.constBits());
}

TEST_F(ImagesInUse, ABadgeIsDrawnOnACopyPixelByPixel) {
    const auto plain = icon({"image-x-generic"});
    const auto badged = icon({"image-x-generic"}, "generic-file", IconBadge::Alias);
    const QImage before = plain->image().copy();
    const QImage once = badged->image(128, 1);
    QImage twice = badged->image(64, 2);
    EXPECT_EQ(twice.devicePixelRatio(), 2);
    twice.setDevicePixelRatio(1);
    EXPECT_EQ(once, twice);
    EXPECT_NE(once, before);
    EXPECT_EQ(plain->image(), before);
    for (const qreal scale : {1.25, 1.26}) // as many pixels
        EXPECT_EQ(plain->image(16, scale).devicePixelRatio(), scale);
}

TEST_F(ImagesInUse, ADamagedFileIsNotShared) {
    const QImage file = icon({"damaged"})->image();
    const QImage folder = icon({"damaged"}, "generic-folder")->image();
    const QImage next = icon({"damaged", "missing", "image-x-generic"})->image();
    EXPECT_FALSE(file.isNull());
    EXPECT_NE(file, folder);
    EXPECT_EQ(next.pixelColor(64, 64), QColor(Qt::red)) << "the icon of the next name";
}

} // namespace
