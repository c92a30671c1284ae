// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/PlainPng.h"

#include "platform/formats/BigEndian.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include <QByteArray>
#include <QColorSpace>
#include <QImage>

#include <libdeflate.h>

// Qt reads the same files by libpng.

namespace {

using namespace MWCore;

constexpr int kWidth = 9;
constexpr int kHeight = 11;

QByteArray chunk(const QByteArray &typeAndContent) {
    QByteArray bytes;
    appendNumber(bytes, static_cast<uint32_t>(typeAndContent.size() - 4));
    bytes += typeAndContent;
    appendNumber(bytes, libdeflate_crc32(0, typeAndContent.constData(),
                                         static_cast<std::size_t>(typeAndContent.size())));
    return bytes;
}

/// Depth, colour type, and the methods of compression, filtering and interlacing.
const QByteArray kForm("\x08\x06\0\0\0", 5);

QByteArray png(const QByteArray &pixels, const QByteArray &form = kForm,
               const QByteArray &others = {}) {
    QByteArray header("IHDR");
    appendNumber(header, uint32_t{kWidth});
    appendNumber(header, uint32_t{kHeight});
    const QByteArray data = qCompress(pixels).mid(4);
    return "\x89PNG\r\n\x1a\n" + chunk(header + form) + others + chunk("IDAT" + data.first(20)) +
           chunk("IDAT" + data.mid(20)) + chunk("IEND");
}

/// Rows of noise, each with the type of a filter before it.
QByteArray rows(int filter, int bytesPerPixel = 4) {
    std::mt19937 random(1);
    QByteArray bytes;
    for (int row = 0; row < kHeight; ++row) {
        bytes += static_cast<char>(filter < 0 ? row % 5 : filter);
        for (int byte = 0; byte < bytesPerPixel * kWidth; ++byte)
            bytes += static_cast<char>(random());
    }
    return bytes;
}

QImage asQtReads(const QByteArray &bytes) {
    QImage image = QImage::fromData(bytes, "png").convertToFormat(QImage::Format_RGBA8888);
    image.setColorSpace({});
    return image;
}

TEST(PlainPng, HasThePixelsThatQtReads) {
    for (const int filter : {0, 1, 2, 3, 4, -1}) {
        const QByteArray bytes = png(rows(filter), kForm, chunk("tEXtTitle") + chunk("sRGB\1"));
        const auto image = decodePlainPng(bytes);
        ASSERT_TRUE(image) << filter;
        EXPECT_EQ(*image, asQtReads(bytes)) << filter;
    }
}

TEST(PlainPng, LeavesOtherFormsToQt) {
    const QByteArray forms[] = {
        QByteArray("\x10\x06\0\0\0", 5),
        QByteArray("\x08\x02\0\0\0", 5),
        QByteArray("\x08\x06\0\0\1", 5),
    };
    for (const QByteArray &form : forms)
        EXPECT_FALSE(decodePlainPng(png(rows(0), form)));
    for (const char *const type : {"gAMA", "cHRM", "iCCP", "tRNS"})
        EXPECT_FALSE(decodePlainPng(png(rows(0), kForm, chunk(type)))) << type;
    EXPECT_FALSE(decodePlainPng(png(rows(5)))) << "no such filter";
    EXPECT_FALSE(decodePlainPng(png(rows(0).chopped(1))));
    EXPECT_FALSE(decodePlainPng(png(rows(0) + '\0')));
}

TEST(PlainPng, NoDamageGoesUnnoticed) {
    const QByteArray bytes = png(rows(-1));
    for (qsizetype length = 0; length < bytes.size(); ++length)
        ASSERT_FALSE(decodePlainPng(bytes.first(length))) << length;
    for (qsizetype offset = 0; offset < bytes.size(); ++offset) {
        QByteArray damaged = bytes;
        damaged[offset] = static_cast<char>(damaged[offset] ^ 0x11);
        ASSERT_FALSE(decodePlainPng(damaged)) << offset;
    }
}

/// The header promises more than so few bytes can contain; nothing is allocated for it.
TEST(PlainPng, BelievesNoSizeWithoutPixels) {
    QByteArray bytes = png(rows(0));
    QByteArray header = "IHDR" + QByteArray::fromHex("7fffffff7fffffff") + kForm;
    bytes.replace(8, 25, chunk(header));
    EXPECT_FALSE(decodePlainPng(bytes));
}

} // namespace
