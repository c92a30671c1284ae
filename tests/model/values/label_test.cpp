// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXLabelManager.h"
#include "platform/workspace/UserDefaults.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>

#include <QCoreApplication>
#include <QSettings>

namespace {

using MWCore::MXLabel;
using MWCore::MXLabelManager;
using MWCore::UserDefaults;

TEST(Labels, AreInMenuOrder) {
    const auto manager = MXLabelManager::init();
    const struct {
        int16_t number;
        const char *name;
    } rows[] = {{0, "None"},  {6, "Red"},  {7, "Orange"}, {5, "Yellow"},
                {2, "Green"}, {4, "Blue"}, {3, "Purple"}, {1, "Gray"}};
    ASSERT_EQ(manager->labelArray().size(), 8);
    for (std::size_t place = 0; place < std::size(rows); ++place) {
        const MXLabel::Ptr label = manager->labelArray()[qsizetype(place)];
        EXPECT_EQ(label->id(), rows[place].number);
        EXPECT_EQ(label->description(), rows[place].name);
        EXPECT_EQ(manager->labelWithID(static_cast<uint16_t>(label->id())), label);
    }
    EXPECT_EQ(manager->noneLabel()->id(), 0);
    EXPECT_FALSE(manager->labelWithID(8));
    EXPECT_FALSE(manager->labelWithID(65535));
    manager->setLabelArray({});
    EXPECT_FALSE(manager->noneLabel());
    EXPECT_EQ(MXLabelManager::sharedLabelManager(), MXLabelManager::sharedLabelManager());
}

/// The angle between two colours on the colour wheel, in degrees.
int hueDistance(const QColor &one, const QColor &other) {
    const int distance = std::abs(one.hslHue() - other.hslHue());
    return std::min(distance, 360 - distance);
}

TEST(Labels, HaveSwatchesOfTheirColour) {
    const auto manager = MXLabelManager::init();
    EXPECT_TRUE(manager->noneLabel()->colorSwatch().isNull());
    EXPECT_TRUE(MXLabel::initWithName("Other", Qt::red, 8)->colorSwatch().isNull());
    EXPECT_TRUE(MXLabel::initWithName("Other", Qt::red, -1)->colorSwatch().isNull());
    for (uint16_t number = 1; number <= 7; ++number)
        for (const int ratio : {1, 2}) {
            const MXLabel::Ptr label = manager->labelWithID(number);
            const QImage swatch = label->colorSwatch(ratio);
            ASSERT_EQ(swatch.size(), QSize(16 * ratio, 16 * ratio)) << number;
            EXPECT_EQ(swatch.devicePixelRatio(), ratio);
            EXPECT_EQ(swatch.pixelColor(0, 0).alpha(), 0) << "round at the corners";
            const QColor middle = swatch.pixelColor(8 * ratio, 8 * ratio);
            EXPECT_EQ(middle.alpha(), 255);
            EXPECT_LE(hueDistance(middle, label->color()), 6) << number;
        }
}

TEST(Labels, CanBeRenamedAndRecolouredByTheUser) {
    const TemporaryFolder folder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString(folder.path()));
    QCoreApplication::setApplicationName("Labels");
    {
        UserDefaults defaults;
        defaults.setValue("MXLabelName6", "Urgent");
        defaults.setValue("MXLabelColor6", "#ff0080");
        defaults.setValue("MXLabelName2", "");
        defaults.setValue("MXLabelColor2", "no colour");
    }
    const auto manager = MXLabelManager::init();
    EXPECT_EQ(manager->labelWithID(6)->description(), "Urgent");
    EXPECT_EQ(manager->labelWithID(6)->color(), QColor(0xff, 0, 0x80));
    EXPECT_EQ(manager->labelWithID(2)->description(), "Green");
    EXPECT_TRUE(manager->labelWithID(2)->color().isValid());
    {
        UserDefaults defaults;
        defaults.remove("MXLabelName6");
    }
    EXPECT_EQ(manager->labelWithID(6)->description(), "Urgent") << "until they are read again";
    manager->_loadSystemLabels();
    EXPECT_EQ(manager->labelWithID(6)->description(), "Red");
}

} // namespace
