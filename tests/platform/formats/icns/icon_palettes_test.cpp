// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconPalettes.h"

#include "platform/formats/BigEndian.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <QByteArray>
#include <QImage>

namespace {

using namespace MWCore;

int squaredDistance(QRgb a, QRgb b) {
    const int red = qRed(a) - qRed(b);
    const int green = qGreen(a) - qGreen(b);
    const int blue = qBlue(a) - qBlue(b);
    return red * red + green * green + blue * blue;
}

uint8_t nearestByTrial(QRgb colour) {
    const auto palette = iconPalette8();
    const auto nearest = std::ranges::min_element(
        palette, {}, [colour](QRgb entry) { return squaredDistance(entry, colour); });
    return uint8_t(nearest - palette.begin());
}

TEST(IconPalettes, FindTheNearestColour) {
    for (QRgb colour = 0; colour < 1U << 24; colour += 1009)
        ASSERT_EQ(
            nearestIndex8(uint8_t(qRed(colour)), uint8_t(qGreen(colour)), uint8_t(qBlue(colour))),
            nearestByTrial(colour))
            << std::hex << colour;
}

TEST(IconPalettes, IndexRowsOfThreeAndFourSamples) {
    for (const int samplesPerPixel : {3, 4}) {
        std::vector<uint8_t> samples;
        for (const QRgb colour : iconPalette8()) {
            samples.insert(samples.end(), {uint8_t(qRed(colour)), uint8_t(qGreen(colour)),
                                           uint8_t(qBlue(colour)), 0x77});
            samples.resize(samples.size() - std::size_t(4 - samplesPerPixel));
        }
        std::vector<uint8_t> indexes(256);
        nearestIndexes8(samples, samplesPerPixel, indexes);
        for (std::size_t index = 0; index < indexes.size(); ++index)
            EXPECT_EQ(indexes[index], index) << samplesPerPixel;
    }
}

void appendElement(QByteArray &family, const char *type, const QByteArray &payload) {
    family += type;
    appendNumber(family, uint32_t(8 + payload.size()));
    family += payload;
}

/// What icns2png reads from an element of 32 x 32 pixels; null if the program is missing.
QImage readByIcns2png(const char *type, const QByteArray &indexes, const std::string &depth) {
    QByteArray elements;
    appendElement(elements, type, indexes);
    appendElement(elements, "ICN#", QByteArray(256, '\xFF'));
    QByteArray family;
    appendElement(family, "icns", elements);

    const TemporaryFolder folder;
    const std::string file = folder.write("icon.icns", family.toStdString());
    runProcess({"icns2png", "-x", "-d", depth, "-o", folder.path(), file});
    return QImage(QString::fromStdString(folder.at("icon_32x32x" + depth + ".png")));
}

TEST(IconPalettes, AreThoseOfIcns2png) {
    QByteArray indexes4;
    QByteArray indexes8;
    for (int pixel = 0; pixel < 32 * 32; ++pixel)
        indexes8 += char(pixel);
    for (int pair = 0; pair < 32 * 32 / 2; ++pair)
        indexes4 += char((2 * pair % 16) << 4 | (2 * pair + 1) % 16);
    const QImage image4 = readByIcns2png("icl4", indexes4, "4");
    const QImage image8 = readByIcns2png("icl8", indexes8, "8");
    if (image4.isNull() || image8.isNull())
        GTEST_SKIP() << "icns2png is not installed";
    for (int pixel = 0; pixel < 32 * 32; ++pixel) {
        const QPoint place(pixel % 32, pixel / 32);
        EXPECT_EQ(image4.pixel(place), iconPalette4()[std::size_t(pixel % 16)]) << pixel;
        EXPECT_EQ(image8.pixel(place), iconPalette8()[std::size_t(pixel % 256)]) << pixel;
    }
}

} // namespace
