// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"
#include "icons/IconFamilyBuilder.h"
#include "platform/formats/BigEndian.h"
#include "platform/formats/icns/ChannelRuns.h"
#include "platform/formats/icns/IconContainer.h"
#include "tests/icons/IconReaders.h"
#include "tests/icons/pictures.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

using namespace MWCore;

namespace {

uint32_t typeOf(const char *text) {
    return *numberAt<uint32_t>(text, 0);
}

/// What IconFamilyBuilder makes.
QByteArray completeFamily() {
    IconFamilyBuilder builder;
    builder.addPicture(Picture(softDisc(200)));
    builder.addPicture(Picture(softDisc(64, 2)), 0, IconFamilyBuilder::Appearance::Dark);
    return builder.build()->data();
}

/// The family with a table of contents at its beginning.
QByteArray withTable(const QByteArray &family) {
    QByteArray table;
    const IconContainer container(family);
    for (const IconContainer::Element &element : container.elements()) {
        appendNumber(table, element.type);
        appendNumber(table, uint32_t(element.length + IconContainer::kHeaderLength));
    }
    const QByteArray start = *familyWithElement({}, kTableOfContentsType, table);
    return familyFromNestedBytes(nestedFamilyBytes(start) + nestedFamilyBytes(family));
}

QByteArray alphaOf(const QImage &image) {
    QByteArray bytes;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            bytes += char(qAlpha(image.pixel(x, y)));
    return bytes;
}

/// Alpha, red, green, blue of each pixel.
QByteArray argbOf(const QImage &image) {
    QByteArray bytes;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            appendNumber(bytes, image.pixel(x, y));
    return bytes;
}

/// The family with every element of shownElements(); the indexes of colours are arbitrary.
QByteArray withMissingElements(QByteArray family) {
    std::mt19937 random;
    for (const ShownElement &row : shownElements()) {
        const IconElementType &type = *iconElementType(typeOf(row.type));
        if (IconContainer(family).find(type.type))
            continue;
        QByteArray data(fixedLength(type).value_or(0), Qt::Uninitialized);
        std::ranges::generate(data, [&random] { return char(random()); });
        if (data.isEmpty())
            data = argbOf(softDisc(type.size.width()));
        EXPECT_EQ(SetIconFamilyData(family, type.type, data), noErr);
    }
    return family;
}

/// The length of the payload if every channel is encoded as short as possible.
qsizetype shortestLength(const IconElementType &type, const QImage &image) {
    const bool isArgb = type.encoding == IconEncoding::Argb;
    QByteArray payload(isArgb || type.encoding == IconEncoding::PaddedRgb ? 4 : 0, '\0');
    const QByteArray pixels = argbOf(image);
    for (int sample = isArgb ? 0 : 1; sample < 4; ++sample) {
        std::vector<uint8_t> channel;
        for (qsizetype at = sample; at < pixels.size(); at += 4)
            channel.push_back(uint8_t(pixels[at]));
        appendChannelRuns(payload, channel);
    }
    return payload.size();
}

/// Noise with just enough equal samples that the shortest encoding takes @p length bytes; null if
/// there is none.
QImage imageOfLength(const IconElementType &type, qsizetype length) {
    const qsizetype pixels = qsizetype(type.size.width()) * type.size.height();
    QImage image = noise(type.size.width());
    for (qsizetype sample = 0;;) {
        const qsizetype excess = shortestLength(type, image) - length;
        if (excess <= 0)
            return excess == 0 ? image : QImage();
        // Each saves a byte, and a lead byte now and then.
        const qsizetype end = sample + std::max<qsizetype>(1, excess * 127 / 128);
        for (; sample < end; ++sample)
            image.bits()[sample % pixels * 4 + sample / pixels] = 200;
    }
}

TEST_P(IconReaders, ShowEachElement) {
    const IconContainer container(withMissingElements(completeFamily()));
    for (const ShownElement &row : shownElements()) {
        SCOPED_TRACE(row.type);
        QByteArray family;
        for (const uint32_t type : withMask(typeOf(row.type)))
            if (const IconContainer::Element *const element = container.find(type))
                family = *familyWithElement(family, type, container.payload(*element));
        ASSERT_FALSE(family.isEmpty());
        expectSameImages(family);
    }
}

TEST_P(IconReaders, ShowWholeFamilies) {
    const QByteArray complete = completeFamily();
    EXPECT_EQ(expectSameImages(complete), reader().largestWidth);
    EXPECT_EQ(expectSameImages(withTable(complete)), reader().largestWidth);
    for (const QImage &image : {softDisc(300), noise(128), oneColour(128)})
        expectSameImages(IconFamily::initWithThumbnailsOfImage(image)->data());
}

TEST_P(IconReaders, AreNotMisledByLengths) {
    const struct {
        const char *type;
        qsizetype length; ///< also that of pixels in another encoding
    } rows[] = {
        {"is32", 16 * 16 * 3},         {"is32", 16 * 16 * 3 + 4}, {"il32", 32 * 32 * 3},
        {"ih32", 48 * 48 * 3},         {"it32", 128 * 128 * 3},   {"it32", 128 * 128 * 3 + 4},
        {"ic04", 16 * 16 * 4 / 8},     {"ic04", 16 * 16 * 4},     {"ic05", 32 * 32 * 5 / 8 * 2},
        {"ic05", 48 * 48 * 5 / 8 * 2}, {"icsb", 64 * 64 / 8 * 2},
    };
    for (const auto &[type, length] : rows) {
        SCOPED_TRACE(std::string(type) + " " + std::to_string(length));
        const QImage image = imageOfLength(*iconElementType(typeOf(type)), length);
        ASSERT_FALSE(image.isNull());
        QByteArray family;
        for (const uint32_t part : withMask(typeOf(type)))
            ASSERT_EQ(SetIconFamilyData(family, part,
                                        part == typeOf(type) ? argbOf(image) : alphaOf(image)),
                      noErr);
        ASSERT_EQ(IconFamily::initWithData(family)->imageOfElement(typeOf(type)), image);
        expectSameImages(family);
    }
}

INSTANTIATE_TEST_SUITE_P(Peers, IconReaders, testing::Range(0, kIconReaderCount),
                         [](const auto &row) { return kIconReaders[row.param].name; });

} // namespace
