// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"
#include "icons/IconFamilyBuilder.h"
#include "icons/IconFamilyReport.h"
#include "platform/formats/BigEndian.h"
#include "platform/formats/icns/IconContainer.h"
#include "tests/support/LoggedMessages.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <QColor>

using namespace MWCore;

namespace {

QString textOf(const std::string &path) {
    return QString::fromStdString(path);
}

/// A half-transparent disc with a colour gradient.
QImage disc(int width, int height) {
    QImage image(width, height, QImage::Format_RGBA8888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double across = 2.0 * x / width - 1;
            const double down = 2.0 * y / height - 1;
            const int alpha = across * across + down * down < 1 ? 200 : 0;
            image.setPixel(x, y, qRgba(x * 255 / width, y * 255 / height, 90, alpha));
        }
    return image;
}

std::vector<QByteArray> typesIn(const QByteArray &family) {
    std::vector<QByteArray> types;
    for (const IconElementReport &element : examineIconFamily(family).elements) {
        QByteArray type;
        appendNumber(type, element.type);
        types.push_back(type);
    }
    return types;
}

} // namespace

TEST(IconFamily, ThumbnailsAreTwelveElementsInOrder) {
    EXPECT_TRUE(IconFamily::init()->data().isEmpty());
    EXPECT_FALSE(IconFamily::initWithThumbnailsOfImage({}));
    for (const QSize size : {QSize(700, 300), QSize(3, 1000), QSize(1, 1)}) {
        const auto family =
            IconFamily::initWithThumbnailsOfImage(disc(size.width(), size.height()));
        ASSERT_TRUE(family);
        EXPECT_EQ(typesIn(family->data()),
                  (std::vector<QByteArray>{"ic09", "ic08", "it32", "t8mk", "il32", "icl8", "l8mk",
                                           "ICN#", "is32", "ics8", "s8mk", "ics#"}));
        EXPECT_TRUE(examineIconFamily(family->data()).isValid());
        EXPECT_EQ(family->imageWithAllReps().representations.size(), 9U);
    }
}

TEST(IconFamily, AMaskIsAddedToTheAlphaOfItsElement) {
    const LoggedMessages messages;
    const auto family = IconFamily::init();
    const BitmapImageRep bitmap = BitmapImageRep::fromImage(disc(32, 32));
    EXPECT_FALSE(family->setIconFamilyElement(fourCharCode("ih32"), bitmap));
    EXPECT_TRUE(LoggedMessages::take().isEmpty());
    EXPECT_FALSE(family->setIconFamilyElement(fourCharCode("is32"), bitmap));
    EXPECT_EQ(
        LoggedMessages::take(),
        QStringList("mwcore: Null data returned to setIconFamilyElement:fromBitmapImageRep:"));
    ASSERT_TRUE(family->setIconFamilyElement(fourCharCode("il32"), bitmap));
    const auto alphas = [&family] {
        const auto rep = family->bitmapImageRepWithAlphaForIconFamilyElement(fourCharCode("il32"));
        EXPECT_EQ(rep->bitmapFormat, NSAlphaFirstBitmapFormat);
        return std::pair(rep->bitmapData[0], rep->bitmapData[4 * (32 * 16 + 16)]);
    };
    EXPECT_EQ(alphas(), std::pair('\xFF', '\xFF')) << "opaque without a mask";
    ASSERT_TRUE(family->setIconFamilyElement(fourCharCode("l8mk"), bitmap));
    EXPECT_EQ(alphas(), std::pair('\0', '\xC8'));
    for (const uint32_t type : {fourCharCode("is32"), fourCharCode("l8mk"), fourCharCode("ic07")})
        EXPECT_FALSE(family->bitmapImageRepWithAlphaForIconFamilyElement(type));
    auto damaged = IconFamily::initWithData("damaged");
    EXPECT_FALSE(damaged->setIconFamilyElement(fourCharCode("il32"), bitmap));
    EXPECT_EQ(LoggedMessages::take(),
              QStringList("mwcore: SetIconFamilyData() returned error -199"));
}

TEST(IconFamily, FilesAreReadAndWrittenWhole) {
    const TemporaryFolder folder;
    const auto family = IconFamily::initWithThumbnailsOfImage(disc(64, 64));
    const std::string path = folder.at("a.icns");
    ASSERT_TRUE(family->writeToFile(textOf(path)));
    EXPECT_EQ(IconFamily::initWithContentsOfFile(textOf(path))->data(), family->data());
    EXPECT_FALSE(family->writeToFile(textOf(folder.at("no/a.icns"))));
    EXPECT_FALSE(family->writeToFile(textOf(folder.fifo("fifo"))));
    for (const std::string &other : {folder.at("none"), folder.at("fifo"), folder.file("empty"),
                                     folder.write("text", "no icon"), folder.path()})
        EXPECT_FALSE(IconFamily::initWithContentsOfFile(textOf(other))) << other;
}

/// A family of a set comes apart into the same set, byte for byte.
TEST(IconFamilyBuilder, ASetComesBack) {
    const TemporaryFolder folder;
    IconFamilyBuilder first;
    first.addPicture(Picture(disc(1024, 1024)));
    first.addPicture(Picture(disc(33, 20)), 0, IconFamilyBuilder::Appearance::Dark);
    first.setPngEffort(1);
    const auto family = first.build();
    ASSERT_TRUE(family && examineIconFamily(family->data()).isValid());
    EXPECT_EQ(typesIn(family->data()).size(), 23U);
    const auto dark = family->nestedFamily(kDarkFamilyType);
    ASSERT_TRUE(dark);
    EXPECT_EQ(typesIn(dark->data()).size(), 10U);
    EXPECT_EQ(dark->imageWithAllReps().bestImage(1000).width(), 1024);

    const QString set = textOf(folder.at("one.iconset"));
    ASSERT_EQ(writeIconset(*family, set), noErr);
    IconFamilyBuilder second;
    second.setPngEffort(1);
    ASSERT_EQ(second.addIconset(set), noErr);
    const auto again = second.build();
    ASSERT_TRUE(again);
    const auto other = IconFamily::initWithData(family->data());
    ASSERT_TRUE(other->setNestedFamily(kDarkFamilyType, *IconFamily::init()));
    // A set has no 48 pixels; they are made from 64 here and from 1,024 there.
    const auto without48 = [](IconFamilyHandle bytes) {
        for (const uint32_t type : {fourCharCode("ih32"), fourCharCode("h8mk")})
            EXPECT_EQ(RemoveIconFamilyData(bytes, type), noErr);
        return bytes;
    };
    EXPECT_EQ(without48(again->data()), without48(other->data()));
    const QString secondSet = textOf(folder.at("two.iconset"));
    ASSERT_EQ(writeIconset(*again, secondSet), noErr);
    int files = 0;
    for (const auto &entry : std::filesystem::directory_iterator(folder.at("one.iconset"))) {
        std::ifstream one(entry.path()), two(folder.at("two.iconset") / entry.path().filename());
        EXPECT_TRUE(std::equal(std::istreambuf_iterator<char>(one), {},
                               std::istreambuf_iterator<char>(two), {}));
        ++files;
    }
    EXPECT_EQ(files, 10);
}

TEST(IconFamilyBuilder, EachElementIsMadeFromThePictureThatFitsBest) {
    const auto plain = [](int width, QRgb colour) {
        QImage image(width, width, QImage::Format_RGBA8888);
        image.fill(QColor::fromRgb(colour));
        return Picture(image);
    };
    IconFamilyBuilder builder;
    builder.addPicture(plain(32, qRgb(255, 0, 0)), 1);
    builder.addPicture(plain(32, qRgb(0, 255, 0)), 2);
    builder.addPicture(plain(64, qRgb(0, 0, 255)));
    builder.addPicture(plain(300, qRgb(255, 255, 0)));
    const auto family = builder.build();
    const struct {
        const char (&type)[5];
        QRgb colour;
    } rows[] = {{"ic04", qRgb(255, 0, 0)},  {"ic05", qRgb(255, 0, 0)}, {"ic11", qRgb(0, 255, 0)},
                {"ic12", qRgb(0, 0, 255)},  {"ih32", qRgb(0, 0, 255)}, {"ic07", qRgb(255, 255, 0)},
                {"ic10", qRgb(255, 255, 0)}};
    for (const auto &row : rows)
        EXPECT_EQ(family->imageOfElement(fourCharCode(row.type)).pixel(9, 9), row.colour)
            << row.type;
    const TemporaryFolder folder;
    EXPECT_EQ(builder.addIconset(textOf(folder.path())), fnfErr);
    EXPECT_FALSE(IconFamilyBuilder().build());
}

TEST(IconFamilyReport, NamesWhatIsWrong) {
    const auto withElement = [](const char(&type)[5], const QByteArray &payload) {
        return *familyWithElement({}, fourCharCode(type), payload);
    };
    const auto nested = familyWithElement({}, kDarkFamilyType, "no element");
    QByteArray png;
    const auto small = IconFamily::initWithThumbnailsOfImage(disc(8, 8));
    const IconContainer container(small->data());
    png = container.payload(*container.find(fourCharCode("ic08"))).toByteArray();
    const struct {
        QByteArray family;
        QString problem;
    } rows[] = {
        {withElement("is32", QByteArray("\xFF\0", 2).repeated(6)),
         "has no mask, so it is opaque and some programs read no further"},
        {withElement("s8mk", QByteArray(255, 1)), "has 255 bytes, not 256"},
        {withElement("is32", "xyz"), "is damaged"},
        {withElement("ic09", png), "is 256 x 256 pixels, not 512 x 512"},
        {withElement("ic08", png.first(100)), "is damaged"},
        {withElement("ic08", "text"), "is in no known format"},
        {withElement("TOC ", "text"), "does not list the elements as they are"},
        {withElement("it32", "\1\2\3\4" + QByteArray("\xFF\0", 2).repeated(379)),
         "does not begin with four zero bytes, so some programs refuse it"},
        {*nested, "an element extends beyond the end"},
    };
    for (const auto &row : rows) {
        const IconFamilyReport report = examineIconFamily(row.family);
        EXPECT_EQ(report.elements.at(0).problem, row.problem);
        EXPECT_FALSE(report.isValid());
    }
    EXPECT_EQ(examineIconFamily({}).problem, "has no elements");
    QByteArray deep;
    for (int level = 0; level < 1000; ++level)
        deep = *familyWithElement({}, kDarkFamilyType, nestedFamilyBytes(deep));
    EXPECT_FALSE(examineIconFamily(deep).isValid());
    EXPECT_TRUE(examineIconFamily(withElement("ic08", png)).isValid());
}
