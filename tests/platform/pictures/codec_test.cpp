// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/BigEndian.h"
#include "platform/pictures/Jpeg2000.h"
#include "platform/pictures/Png.h"
#include "platform/pictures/PngEncoding.h"
#include "tests/platform/pictures/pictures.h"

#include <gtest/gtest.h>
#include <libdeflate.h>

#include <QBuffer>
#include <QColorSpace>
#include <QtEndian>

namespace {

using namespace MWCore;

constexpr QSize kSize(16, 12);

/// What other programs encoded, in the corpus.
QColor sampleColour(int x, int y) {
    return {16 * x, 20 * y, (16 * x) ^ (20 * y), 255 - 15 * x};
}

QImage sample() {
    QImage image(kSize, QImage::Format_RGBA8888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, sampleColour(x, y));
    return image;
}

QImage withoutAlpha(const QImage &image) {
    return image.convertToFormat(QImage::Format_RGBX8888).convertToFormat(image.format());
}

/// Red in all three channels.
QImage gray(QImage image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            uchar *const pixel = image.scanLine(y) + qsizetype{4} * x;
            pixel[1] = pixel[2] = pixel[0];
        }
    return image;
}

QByteArray pngOf(const QImage &image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

TEST(Png, DecodesEveryPixelFormat) {
    for (const QImage::Format format :
         {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_Grayscale8,
          QImage::Format_Grayscale16, QImage::Format_RGB888, QImage::Format_RGBA8888,
          QImage::Format_RGBA64}) {
        const QImage image = sample().convertToFormat(format);
        const auto decoded = decodePng(pngOf(image), kSize);
        ASSERT_TRUE(decoded) << format;
        EXPECT_EQ(*decoded, image.convertToFormat(QImage::Format_RGBA8888)) << format;
    }
    EXPECT_EQ(decodePng(corpusFile("png/rgba.png"), kSize), sample());
}

TEST(Png, RefusesOtherSizesAndDamage) {
    const QByteArray bytes = pngOf(sample());
    EXPECT_EQ(pngSize(bytes), kSize);
    EXPECT_FALSE(decodePng(bytes, kSize.transposed()));
    for (qsizetype length = 0; length < bytes.size() - 12; ++length) // the end chunk is 12 bytes
        ASSERT_FALSE(decodePng(bytes.first(length), kSize)) << length;
    for (qsizetype offset = 0; offset < 29; ++offset) { // what the header's checksum covers
        QByteArray damaged = bytes;
        damaged[offset] = static_cast<char>(damaged[offset] ^ 1);
        ASSERT_FALSE(decodePng(damaged, kSize)) << offset;
    }
}

/// Data after the last row is harmless, but decompressing it may take very long.
TEST(Png, RefusesFarMoreDataThanPixels) {
    const QByteArray bytes = encodePng(sample(), 0);
    const qsizetype rowLength = 1 + qsizetype{4} * kSize.width();
    const auto padded = [&bytes](qsizetype surplus) {
        const QByteArray rows(rowLength * kSize.height() + surplus, '\0'); // transparent
        const QByteArray content = "IDAT" + qCompress(rows).mid(4);
        const auto length = static_cast<std::size_t>(content.size());
        QByteArray data;
        appendNumber(data, static_cast<uint32_t>(content.size() - 4));
        data += content;
        appendNumber(data, libdeflate_crc32(0, content.constData(), length));
        return bytes.first(33) + data + bytes.last(12); // the header and end chunks
    };
    EXPECT_TRUE(decodePng(padded(0), kSize));
    EXPECT_TRUE(decodePng(padded(1), kSize));
    EXPECT_FALSE(decodePng(padded(100'000), kSize));
}

TEST(Png, EncodesPixelsAlone) {
    QImage image = sample();
    image.setText("Title", "text");
    image.setColorSpace(QColorSpace::DisplayP3);
    qsizetype before = std::numeric_limits<qsizetype>::max();
    for (const int effort : {0, 1, kDefaultPngEffort, 9}) {
        const QByteArray bytes = encodePng(image, effort);
        EXPECT_EQ(decodePng(bytes, kSize), sample()) << effort;
        EXPECT_EQ(bytes[24], 8) << "bits";
        EXPECT_EQ(bytes[25], 6) << "colour type";
        EXPECT_EQ(bytes.size(), essentialPng(bytes, PngColour::Drop).size());
        EXPECT_LE(bytes.size(), before);
        before = bytes.size();
    }
    EXPECT_FALSE(pngOf(image).size() == essentialPng(pngOf(image), PngColour::Keep).size());
    EXPECT_TRUE(encodePng(QImage()).isEmpty());
}

struct Jpeg2000Row {
    const char *file;
    QImage image;
};

TEST(Jpeg2000, DecodesWhatOtherProgramsWrite) {
    const QImage opaque = withoutAlpha(sample());
    const Jpeg2000Row rows[] = {
        {"gray.jp2", gray(opaque)}, {"gray-alpha.jp2", gray(sample())},
        {"rgb.j2k", opaque},        {"rgba.jp2", sample()},
        {"tiles.j2k", opaque},      {"precincts.j2k", opaque},
        {"offset.j2k", opaque},     {"layers.jp2", opaque},
    };
    for (const Jpeg2000Row &row : rows) {
        const QByteArray bytes = corpusFile((std::string("jpeg2000/") + row.file).c_str());
        EXPECT_TRUE(isJpeg2000(bytes)) << row.file;
        EXPECT_EQ(jpeg2000Size(bytes), kSize) << row.file;
        EXPECT_EQ(decodeJpeg2000(bytes, kSize), row.image) << row.file;
        EXPECT_FALSE(decodeJpeg2000(bytes, kSize.transposed())) << row.file;
    }
}

TEST(Jpeg2000, ConvertsComponents) {
    // Brightness 16x, and colours of half the resolution: blue difference -38, red difference 52.
    const auto ycc = decodeJpeg2000(corpusFile("jpeg2000/subsampled.j2k"), kSize);
    ASSERT_TRUE(ycc);
    EXPECT_EQ(ycc->pixelColor(5, 3), QColor(153, 56, 13));
    // 12 bits with sign: 256x - 2048.
    const auto wide = decodeJpeg2000(corpusFile("jpeg2000/signed.j2k"), kSize);
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->pixelColor(15, 11), QColor(239, 239, 239));
}

/// Replaces the bytes at @p offset.
QByteArray changed(QByteArray bytes, qsizetype offset, const char *hex) {
    const QByteArray content = QByteArray::fromHex(hex);
    return bytes.replace(offset, content.size(), content);
}

struct LimitRow {
    const char *what;
    qsizetype offset; ///< in the codestream
    const char *hex;
};
constexpr LimitRow kLimitRows[] = {
    {"another width", 8, "7FFFFFFF"},
    {"no tile size", 24, "00000000"},
    {"five components", 40, "0005"},
    {"no component", 40, "0000"},
    {"38 bits", 42, "25"},
    {"no rows", 44, "00"},
    {"65535 layers", 57, "FFFF"},
    {"33 levels", 60, "21"},
    {"an unknown segment", 51, "FF30"},
};

TEST(Jpeg2000, RefusesWhatWouldTakeTooLong) {
    const QByteArray bytes = corpusFile("jpeg2000/rgb.j2k");
    ASSERT_EQ(bytes.sliced(51, 2), QByteArray("\xFF\x52")) << "the coding style";
    for (const LimitRow &row : kLimitRows)
        EXPECT_FALSE(decodeJpeg2000(changed(bytes, row.offset, row.hex), kSize)) << row.what;
    const QByteArray larger = changed(bytes, 8, "0000004000000040");
    EXPECT_TRUE(decodeJpeg2000(changed(larger, 24, "0000004000000040"), {64, 64}));
    EXPECT_FALSE(decodeJpeg2000(changed(larger, 24, "0000000100000001"), {64, 64})) << "4096 tiles";
}

/// A box of length 0 reaches to the end; 1 announces a long length.
TEST(Jpeg2000, FindsTheCodestreamInAnyBox) {
    const QByteArray codestream = corpusFile("jpeg2000/rgb.j2k");
    const QByteArray start = QByteArray::fromHex("0000000C6A5020200D0A870A");
    QByteArray length(8, '\0');
    qToBigEndian<quint64>(static_cast<quint64>(16 + codestream.size()), length.data());
    const QByteArray toEnd = start + QByteArray(4, '\0') + "jp2c" + codestream;
    const QByteArray isLong = start + QByteArray("\0\0\0\1jp2c", 8) + length + codestream;
    const QImage image = withoutAlpha(sample());
    EXPECT_EQ(decodeJpeg2000(toEnd, kSize), image);
    EXPECT_EQ(decodeJpeg2000(isLong + "more", kSize), image);
    length.fill('\xFF');
    EXPECT_EQ(decodeJpeg2000(changed(isLong, 20, length.toHex()), kSize), image) << "truncated";
    EXPECT_FALSE(decodeJpeg2000(changed(isLong, 20, "000000000000000F"), kSize)) << "too short";
}

TEST(Jpeg2000, DecodesWhatThereIsOfATruncatedFile) {
    const QByteArray bytes = corpusFile("jpeg2000/rgba.jp2");
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        const auto image = decodeJpeg2000(bytes.first(length), kSize);
        ASSERT_TRUE(!image || image->size() == kSize) << length;
    }
    EXPECT_TRUE(decodeJpeg2000(bytes.chopped(20), kSize));
}

} // namespace
