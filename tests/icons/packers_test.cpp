// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"

#include "tests/support/LoggedMessages.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include <gtest/gtest.h>
#include <QByteArray>
#include <QImage>
#include <QRandomGenerator>
#include <QStringList>

namespace {

using namespace MWCore;

using Packer = std::optional<QByteArray> (*)(const BitmapImageRep &, int32_t);
struct NamedPacker {
    const char *name;
    Packer pack;
};
constexpr NamedPacker kPackers[] = {
    {"get32BitDataFromBitmapImageRep", IconFamily::get32BitDataFromBitmapImageRep},
    {"get8BitDataFromBitmapImageRep", IconFamily::get8BitDataFromBitmapImageRep},
    {"get8BitMaskFromBitmapImageRep", IconFamily::get8BitMaskFromBitmapImageRep},
    {"get1BitMaskFromBitmapImageRep", IconFamily::get1BitMaskFromBitmapImageRep},
};

constexpr int kPadding = 5; ///< bytes after each row but the last one

struct Layout {
    int32_t bitsPerPixel;
    int32_t samplesPerPixel;
    int32_t bitsPerSample;
};
constexpr Layout kBits{1, 1, 1};
constexpr Layout kGray{8, 1, 8};
constexpr Layout kRgb{24, 3, 8};
constexpr Layout kRgba{32, 4, 8};

/// A square bitmap of exactly these pixels, which are given without padding.
BitmapImageRep bitmapOf(int32_t width, const Layout &layout, const QByteArray &pixels) {
    const qsizetype rowLength = pixels.size() / width;
    BitmapImageRep bitmap{.pixelsWide = width,
                          .pixelsHigh = width,
                          .bitsPerSample = layout.bitsPerSample,
                          .samplesPerPixel = layout.samplesPerPixel,
                          .bitsPerPixel = layout.bitsPerPixel,
                          .bytesPerRow = rowLength + kPadding,
                          .bitmapFormat = {},
                          .bitmapData = {}};
    for (int32_t y = 0; y < width; ++y)
        bitmap.bitmapData += pixels.sliced(y * rowLength, rowLength) + QByteArray(kPadding, '\x99');
    bitmap.bitmapData.chop(kPadding);
    return bitmap;
}

BitmapImageRep randomBitmap(int32_t width, const Layout &layout) {
    QByteArray pixels(qsizetype(width) * width * layout.bitsPerPixel / 8, Qt::Uninitialized);
    QRandomGenerator random(1);
    std::ranges::generate(pixels, [&random] { return char(random.generate()); });
    return bitmapOf(width, layout, pixels);
}

TEST(Packers, SupportTheDocumentedLayouts) {
    struct Row {
        const char *what;
        Layout layout;
        bool isPlanar;
        const char *messages[4]; ///< by packer; null if it supports the layout
    };
    constexpr const char *kPlanar = "isPlanar == YES";
    constexpr const char *k1Bit = "bitsPerSample == 1";
    constexpr const char *k16Bits = "bitsPerSample == 16";
    constexpr const char *k1Sample = "samplesPerPixel == 1, bitsPerPixel == %";
    constexpr const char *k2Samples = "samplesPerPixel == 2, bitsPerPixel == %";
    constexpr const char *k3Samples = "samplesPerPixel == 3, bitsPerPixel == %";
    const Row rows[] = {
        {"RGBA", kRgba, false, {}},
        {"RGB", kRgb, false, {}},
        {"gray", kGray, false, {k1Sample, k1Sample, nullptr, nullptr}},
        {"1 bit", kBits, false, {k1Bit, k1Bit, k1Bit, nullptr}},
        {"planar RGBA", kRgba, true, {kPlanar, kPlanar, kPlanar, kPlanar}},
        {"planar comes first", {64, 4, 16}, true, {kPlanar, kPlanar, kPlanar, kPlanar}},
        {"16 bits per sample",
         {64, 4, 16},
         false,
         {k16Bits, k16Bits, k16Bits,
          "bitsPerPixel == 64, samplesPerPixel== 4, bitsPerSample == 16"}},
        {"gray and alpha",
         {16, 2, 8},
         false,
         {k2Samples, k2Samples, k2Samples,
          "bitsPerPixel == 16, samplesPerPixel== 2, bitsPerSample == 8"}},
        {"padded RGB",
         {32, 3, 8},
         false,
         {k3Samples, k3Samples, k3Samples,
          "bitsPerPixel == 32, samplesPerPixel== 3, bitsPerSample == 8"}},
    };
    const LoggedMessages log;
    for (const Row &row : rows) {
        BitmapImageRep bitmap = randomBitmap(16, row.layout);
        bitmap.isPlanar = row.isPlanar;
        for (std::size_t packer = 0; packer < std::size(kPackers); ++packer) {
            const char *message = row.messages[packer];
            const QString line =
                QStringLiteral("mwcore: %1:requiredPixelSize: returning NULL due to %2")
                    .arg(QLatin1String(kPackers[packer].name), QLatin1String(message));
            EXPECT_EQ(kPackers[packer].pack(bitmap, 16).has_value(), !message)
                << row.what << ", " << kPackers[packer].name;
            EXPECT_EQ(log.take(), message ? QStringList(line) : QStringList()) << row.what;
        }
    }
}

TEST(Packers, RejectOtherSizesAndMissingPixelsSilently) {
    struct Row {
        const char *what;
        int32_t requiredPixelSize;
        void (*change)(BitmapImageRep &bitmap);
    };
    const Row rows[] = {
        {"another size", 32, [](BitmapImageRep & /*bitmap*/) {}},
        {"narrow", 16, [](BitmapImageRep &bitmap) { bitmap.pixelsWide = 15; }},
        {"low", 16, [](BitmapImageRep &bitmap) { bitmap.pixelsHigh = 15; }},
        {"narrow and planar", 16,
         [](BitmapImageRep &bitmap) {
             bitmap.pixelsWide = 15;
             bitmap.isPlanar = true;
         }},
        {"negative", -16,
         [](BitmapImageRep &bitmap) { bitmap.pixelsWide = bitmap.pixelsHigh = -16; }},
        {"a missing byte", 16, [](BitmapImageRep &bitmap) { bitmap.bitmapData.chop(1); }},
        {"no bytes", 16, [](BitmapImageRep &bitmap) { bitmap.bitmapData.clear(); }},
        {"rows of no length", 16, [](BitmapImageRep &bitmap) { bitmap.bytesPerRow = 0; }},
        {"negative rows", 16,
         [](BitmapImageRep &bitmap) { bitmap.bytesPerRow = -bitmap.bytesPerRow; }},
        {"the longest rows", 16,
         [](BitmapImageRep &bitmap) {
             bitmap.bytesPerRow = std::numeric_limits<qsizetype>::max();
         }},
        {"huge", INT32_MAX,
         [](BitmapImageRep &bitmap) { bitmap.pixelsWide = bitmap.pixelsHigh = INT32_MAX; }},
        {"huge with long rows", INT32_MAX,
         [](BitmapImageRep &bitmap) {
             bitmap.pixelsWide = bitmap.pixelsHigh = INT32_MAX;
             bitmap.bytesPerRow = std::numeric_limits<qsizetype>::max();
         }},
    };
    const LoggedMessages log;
    for (const Layout &layout : {kRgb, kRgba}) {
        for (const Row &row : rows) {
            BitmapImageRep bitmap = randomBitmap(16, layout);
            row.change(bitmap);
            for (const NamedPacker &packer : kPackers)
                EXPECT_EQ(packer.pack(bitmap, row.requiredPixelSize), std::nullopt)
                    << row.what << ", " << packer.name;
        }
    }
    EXPECT_EQ(log.take(), QStringList());
}

TEST(Packers, PackEachPixel) {
    struct Row {
        const char *what;
        Packer pack;
        Layout layout;
        const char *pixel;
        QByteArray packed;
    };
    const auto to32Bits = IconFamily::get32BitDataFromBitmapImageRep;
    const auto to8Bits = IconFamily::get8BitDataFromBitmapImageRep;
    const auto toMask = IconFamily::get8BitMaskFromBitmapImageRep;
    const Row rows[] = {
        {"opaque", to32Bits, kRgba, "\1\2\xFD\xFF", "\xFF\1\2\xFD"},
        {"clear", to32Bits, kRgba, "\1\2\3\0", QByteArray(4, '\0')},
        {"127.5 is truncated", to32Bits, kRgba, "\x40\x80\0\x80", QByteArray("\x80\x7F\xFF\0", 4)},
        {"single precision: 254.99", to32Bits, kRgba, "\x07\x03\1\x07", "\x07\xFE\x6D\x24"},
        {"beyond alpha: the low byte", to32Bits, kRgba, "\xC8\xFF\2\3", "\3\x68\xAB\xAA"},
        {"without alpha", to32Bits, kRgb, "\1\2\xFD", "\xFF\1\2\xFD"},
        {"alpha 0 is ignored", to8Bits, kRgba, "\xFF\xFF\xCC\0", "\1"},
        {"premultiplied red", to8Bits, kRgba, "\x88\0\0\x88", "\xDB"},
        {"RGB", to8Bits, kRgb, "\x88\0\0", "\xDB"},
        {"black", to8Bits, kRgb, "\0\0\0", "\xFF"},
        {"alpha", toMask, kRgba, "\1\2\3\4", "\4"},
        {"no alpha is opaque", toMask, kRgb, "\1\2\3", "\xFF"},
        {"gray", toMask, kGray, "\x9A", "\x9A"},
    };
    for (const Row &row : rows) { // 49 pixels: more and less than a vector of the processor holds
        const QByteArray pixels = QByteArray(row.pixel, row.layout.samplesPerPixel).repeated(49);
        EXPECT_EQ(row.pack(bitmapOf(7, row.layout, pixels), 7), row.packed.repeated(49))
            << row.what;
    }
}

TEST(Packers, PackPixelsInTheirOrder) {
    const BitmapImageRep bitmap = randomBitmap(37, kRgba);
    const QByteArray mask = *IconFamily::get8BitMaskFromBitmapImageRep(bitmap, 37);
    const QByteArray data = *IconFamily::get32BitDataFromBitmapImageRep(bitmap, 37);
    const QImage alpha = bitmap.image().convertToFormat(QImage::Format_Alpha8);
    for (qsizetype pixel = 0; pixel < mask.size(); ++pixel) {
        const uint8_t expected = alpha.constScanLine(int(pixel / 37))[pixel % 37];
        ASSERT_EQ(uint8_t(mask[pixel]), expected) << pixel;
        ASSERT_EQ(uint8_t(data[4 * pixel]), expected) << pixel;
    }
}

TEST(Packers, PackMasksOfOneBitTwice) {
    struct Row {
        const char *what;
        Layout layout;
        QByteArray clear;
        QByteArray set;
    };
    const Row rows[] = {
        {"gray", kGray, QByteArray(1, '\0'), "\1"},
        {"the red sample counts", kRgba, QByteArray("\0\xFF\xFF\xFF", 4),
         QByteArray("\x80\0\0\0", 4)},
    };
    const BitmapImageRep bits = randomBitmap(32, kBits);
    const auto mask = IconFamily::get1BitMaskFromBitmapImageRep(bits, 32);
    ASSERT_TRUE(mask);
    ASSERT_EQ(mask->size(), 256);
    EXPECT_EQ(mask->first(128), mask->last(128));
    for (qsizetype y = 0; y < 32; ++y)
        EXPECT_EQ(mask->sliced(4 * y, 4), bits.bitmapData.sliced(y * bits.bytesPerRow, 4));
    for (const Row &row : rows) {
        QByteArray pixels;
        for (int pixel = 0; pixel < 32 * 32; ++pixel)
            pixels += mask->at(pixel / 8) & 0x80 >> pixel % 8 ? row.set : row.clear;
        EXPECT_EQ(IconFamily::get1BitMaskFromBitmapImageRep(bitmapOf(32, row.layout, pixels), 32),
                  mask)
            << row.what;
    }
    EXPECT_EQ(IconFamily::get1BitMaskFromBitmapImageRep(randomBitmap(32, kRgb), 32),
              QByteArray(256, '\xFF'));
}

} // namespace
