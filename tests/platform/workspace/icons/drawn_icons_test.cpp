// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/DrawnIcons.h"

#include "tests/support/LoggedMessages.h"

#include <MWCore/IconElements.h>
#include <MWCore/Picture.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <QDir>
#include <QImage>
#include <QXmlStreamReader>

namespace {

using namespace MWCore;

/// The kinds among the names of the XDG Icon Naming Specification 0.8: all of its MIME types and
/// places but "start-here", the devices that hold files.
constexpr const char *kStandardNames[] = {
    "application-x-executable",
    "audio-x-generic",
    "font-x-generic",
    "image-x-generic",
    "package-x-generic",
    "text-html",
    "text-x-generic",
    "text-x-generic-template",
    "text-x-script",
    "video-x-generic",
    "x-office-address-book",
    "x-office-calendar",
    "x-office-document",
    "x-office-presentation",
    "x-office-spreadsheet",
    "folder",
    "folder-remote",
    "network-server",
    "network-workgroup",
    "user-bookmarks",
    "user-desktop",
    "user-home",
    "user-trash",
    "computer",
    "drive-harddisk",
    "drive-optical",
    "drive-removable-media",
    "media-flash",
    "media-optical",
};

/// The codes of GetIconRef().
constexpr const char *kSystemCodes[] = {
    "docu", "APPL", "APPC", "APPE", "FNDR", "pref", "edtp", "ffil", "tfil", "clpt", "clpp", "clps",
    "clpu", "CLIP", "ilht", "ilge", "ilma", "fldr", "ofld", "dbox", "shfl", "mntd", "ownd", "prvf",
    "apps", "docs", "down", "pics", "musi", "movi", "pubf", "tmpl", "font", "macs", "favs", "rapp",
    "rdoc", "rsrv", "hom ", "desk", "trsh", "ftrh", "hdsk", "flpy", "cddr", "ramd", "pcmc", "srvr",
    "gnet", "root", "user", "ownr", "gusr", "grup", "note", "caut", "stop", "ques", "help", "lock",
    "ulck", "lbdg", "abdg", "alis", "sbdg", "mbdg", "baro", "faro", "ejec", "burn",
};

/// The names of all drawings.
QStringList drawings() {
    QStringList names;
    for (const QString &file : QDir(":/mwcore").entryList({"*.svg"}))
        names += file.chopped(int(std::strlen(".svg")));
    return names;
}

/// Drawings for 128 points.
bool isLarge(const QString &name) {
    return !name.endsWith("-16") && !name.endsWith("-24");
}

QImage rendered(const QString &name, int pixels) {
    OSStatus status = noErr;
    const auto picture = Picture::fromBytes(drawingData(name).value_or(QByteArray()), &status);
    return picture ? picture->squareImage(pixels) : QImage();
}

int designSize(const QString &name) {
    return name.endsWith("-16") ? 16 : name.endsWith("-24") ? 24 : 128;
}

int alphaAt(const QImage &image, int x, int y) {
    return qAlpha(image.pixel(x, y));
}

/// The highest alpha of the outermost pixels.
int borderAlpha(const QImage &image) {
    const int last = image.width() - 1;
    int highest = 0;
    for (int at = 0; at <= last; ++at)
        for (const int alpha : {alphaAt(image, at, 0), alphaAt(image, at, last),
                                alphaAt(image, 0, at), alphaAt(image, last, at)})
            highest = std::max(highest, alpha);
    return highest;
}

int solidPixels(const QImage &image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += alphaAt(image, x, y) >= 128;
    return count;
}

/// The number of pixels of which a channel differs visibly.
int difference(const QImage &one, const QImage &other) {
    constexpr int kVisible = 48;
    constexpr int kChannels = 4;
    int count = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const uchar *const pixel = one.constScanLine(y) + qsizetype{kChannels} * x;
            const uchar *const otherPixel = other.constScanLine(y) + qsizetype{kChannels} * x;
            count += !std::equal(pixel, pixel + kChannels, otherPixel,
                                 [](int a, int b) { return std::abs(a - b) <= kVisible; });
        }
    return count;
}

IconRef named(const QString &name) {
    IconRef icon;
    icon.themeNames = {name};
    icon.drawing = "generic-file";
    return icon;
}

TEST(DrawnIcons, ExistForEveryKind) {
    std::vector<std::string> names(std::begin(kStandardNames), std::end(kStandardNames));
    for (const char *const name : {"inode-fifo", "inode-socket", "inode-blockdevice",
                                   "inode-chardevice", "inode-symlink", "unknown"})
        names.emplace_back(name);
    std::ifstream generic("/usr/share/mime/generic-icons"); // of the shared MIME database
    for (std::string line; std::getline(generic, line);)
        if (const std::string name = line.substr(line.find(':') + 1); name != "text-plain")
            names.push_back(name);
    ASSERT_GT(names.size(), 100U) << "no MIME database";
    for (const std::string &name : names)
        for (const int points : {16, 24, 128}) {
            const std::string small = points == 128 ? "" : "-" + std::to_string(points);
            EXPECT_EQ(drawingFor(named(name.c_str()), points).toStdString(), name + small);
        }
    for (const char *const code : kSystemCodes) {
        const auto type = uint32_t(uchar(code[0])) << 24 | uint32_t(uchar(code[1])) << 16 |
                          uint32_t(uchar(code[2])) << 8 | uint32_t(uchar(code[3]));
        IconRef icon;
        ASSERT_EQ(GetIconRef(kOnSystemDisk, kSystemIconsCreator, type, &icon), noErr) << code;
        EXPECT_TRUE(icon.themeNames.contains(drawingFor(icon, 128))) << code;
    }
}

TEST(DrawnIcons, ContainOnlyWhatQtDraws) {
    const QStringList elements = {"svg", "defs", "linearGradient", "stop", "g", "path"};
    const QStringList attributes = {
        "width",
        "height",
        "viewBox",
        "id",
        "x1",
        "y1",
        "x2",
        "y2",
        "gradientUnits",
        "stop-color",
        "offset",
        "d",
        "fill",
        "fill-rule",
        "opacity",
        "stroke",
        "stroke-width",
        "stroke-linecap",
        "stroke-linejoin",
        "stroke-dasharray",
        "transform",
    };
    constexpr qsizetype kLongest = 3072;
    for (const QString &name : drawings()) {
        const QByteArray bytes = drawingData(name).value_or(QByteArray());
        EXPECT_LT(bytes.size(), kLongest) << name.toStdString();
        QXmlStreamReader reader(bytes);
        while (!reader.atEnd())
            if (reader.readNext() == QXmlStreamReader::StartElement) {
                EXPECT_TRUE(elements.contains(reader.name())) << name.toStdString();
                for (const auto &attribute : reader.attributes())
                    EXPECT_TRUE(attributes.contains(attribute.name())) << name.toStdString();
            }
        EXPECT_FALSE(reader.hasError()) << name.toStdString();
    }
}

TEST(DrawnIcons, AreDrawnWithinAMargin) {
    const LoggedMessages log;
    const QStringList names = drawings();
    EXPECT_GT(names.size(), 150);
    for (const QString &name : names) {
        const int size = designSize(name);
        for (const int pixels : {size, 2 * size}) {
            const QImage image = rendered(name, pixels);
            ASSERT_EQ(image.width(), pixels) << name.toStdString();
            EXPECT_EQ(borderAlpha(image), 0) << name.toStdString() << ' ' << pixels;
            EXPECT_GT(solidPixels(image), pixels * pixels / 8) << name.toStdString();
        }
    }
    EXPECT_EQ(LoggedMessages::take().join('\n').toStdString(), "");
}

TEST(DrawnIcons, DifferFromEachOther) {
    // Names that share a drawing on purpose.
    const QStringList aliases = {
        "application-pkcs12",
        "application-pkix-cert",
        "application-x-x509-ca-cert",
        "application-x-mswinurl",
        "generic-folder",
        "help-browser",
        "message-rfc822",
        "text-calendar",
        "text-vcard",
        "user-bookmarks",
        "application-vnd.oasis.opendocument.graphics",
    };
    constexpr int kFewestPixels = 5; // of 256
    std::map<QString, QImage> seen;
    for (const QString &name : drawings()) {
        if (!isLarge(name) || aliases.contains(name))
            continue;
        const QImage image = rendered(name + "-16", 16);
        ASSERT_FALSE(image.isNull()) << name.toStdString();
        for (const auto &[other, otherImage] : seen)
            EXPECT_GE(difference(image, otherImage), kFewestPixels)
                << name.toStdString() << " looks like " << other.toStdString();
        seen.emplace(name, image);
    }
}

} // namespace
