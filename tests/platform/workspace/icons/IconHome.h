// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/catalogue/FileCatalogue.h"
#include "platform/catalogue/ResourceFile.h"
#include "platform/workspace/icons/DesktopIconLookup.h"
#include "platform/workspace/icons/ItemIcon.h"
#include "platform/workspace/themes/IconTheme.h"
#include "tests/support/TemporaryFolder.h"

#include <MWCore/IconElements.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <QColor>
#include <QImage>

/// A home folder with a theme, in which every picture has one colour, by which it is recognised.
class IconHome : public ::testing::Test {
protected:
    IconHome() {
        for (const char *const variable :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
            setenv(variable, home_.path().c_str(), 1);
        setenv("XDG_DATA_DIRS", "/usr/share", 1); // with the MIME database
        setenv("XDG_CONFIG_DIRS", home_.at("config").c_str(), 1);
        (void)home_.write("icons/T/index.theme",
                          "[Icon Theme]\nDirectories=a\n[a]\nSize=128\nType=Scalable\n"
                          "MinSize=1\nMaxSize=512\n");
        MWCore::IconTheme::setCurrentName("T");
    }
    ~IconHome() override { MWCore::setDesktopIconLookup({}); }

    /// Makes a picture of @p color and returns its path.
    std::string picture(const std::string &name, const QColor &color, int size = 128) const {
        (void)home_.write(name, "");
        QImage image(size, size, QImage::Format_ARGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(QString::fromStdString(home_.at(name)), "PNG"));
        return home_.at(name);
    }
    void themeIcon(const std::string &name, const QColor &color) const {
        (void)picture("icons/T/a/" + name + ".png", color);
        MWCore::IconTheme::setCurrentName("T"); // is read again
    }

    [[nodiscard]] static MWCore::FSRef ref(const std::string &path) {
        MWCore::FSRef item;
        EXPECT_EQ(MWCore::FSPathMakeRef(path.c_str(), &item), MWCore::noErr) << path;
        return item;
    }

    /// Gives the item @p path a custom icon of @p color, stored in the fork of @p holder.
    void setCustomIcon(const std::string &path, const std::string &holder,
                       const QColor &color) const {
        using namespace MWCore;
        IconRef icon;
        icon.file = picture("custom.png", color).c_str();
        IconFamilyHandle family;
        EXPECT_EQ(IconRefToIconFamily(icon, kSelectorAllAvailableData, &family), noErr);
        const std::filesystem::path file = holder;
        FSRef item;
        (void)FSCreateResFile(ref(file.parent_path()), file.filename().c_str(), &item);
        OSStatus status = noErr;
        const auto fork = ResourceFile::open(ref(holder), fsRdWrPerm, &status);
        ASSERT_TRUE(fork);
        EXPECT_EQ(fork->addResource(kIconFamilyType, kCustomIconResource, {}, family), noErr);
        EXPECT_EQ(fork->close(), noErr);
        setFlag(path, true);
    }
    static void setFlag(const std::string &path, bool isOn) {
        EXPECT_EQ(MWCore::FSChangeFinderInfo(ref(path),
                                             [isOn](MWCore::FinderInfo &info) {
                                                 info.flags.setFlag(MWCore::kHasCustomIcon, isOn);
                                             }),
                  MWCore::noErr);
    }

    [[nodiscard]] static MWCore::IconRef description(const std::string &path) {
        return MWCore::iconForFile(path.c_str())->description();
    }

    /// The colour in the middle of what is drawn for the item.
    [[nodiscard]] static std::string drawn(const std::string &path, int points = 128) {
        const QImage image = MWCore::iconForFile(path.c_str())->image(points);
        return image.pixelColor(points / 2, points / 2).name().toStdString();
    }

    TemporaryFolder home_;
};
