// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/BitmapImageRep.h"

#include <cstdint>

#include <gtest/gtest.h>
#include <QByteArray>
#include <QImage>
#include <QRgb>

namespace {

using namespace MWCore;

/// Every pixel has another colour and another alpha.
QImage colouredImage(QImage::Format format) {
    QImage image(9, 5, QImage::Format_RGBA8888_Premultiplied);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(20 * x, 3 * y, 5 * (x + y), 200 + x * y));
    return image.convertToFormat(format);
}

TEST(BitmapImageRep, KeepsThePixelsOfAnImage) {
    for (const auto format :
         {QImage::Format_ARGB32, QImage::Format_RGB32, QImage::Format_RGBA8888_Premultiplied,
          QImage::Format_Grayscale8, QImage::Format_RGBA64, QImage::Format_Indexed8}) {
        const QImage image = colouredImage(format);
        EXPECT_EQ(BitmapImageRep::fromImage(image).image(),
                  image.convertToFormat(QImage::Format_RGBA8888_Premultiplied))
            << format;
    }
    EXPECT_TRUE(BitmapImageRep::fromImage({}).image().isNull());
}

TEST(BitmapImageRep, MakesAnImageOfEachLayout) {
    struct Row {
        int32_t samplesPerPixel;
        NSBitmapFormats format;
        const char *samples; ///< of one pixel
        QRgb colour;
    };
    const Row rows[] = {
        {1, {}, "\xA0", qRgb(0xA0, 0xA0, 0xA0)},
        {3, NSAlphaFirstBitmapFormat, "\x10\x20\x30", qRgb(0x10, 0x20, 0x30)},
        {4, {}, "\x08\x10\x20\x80", qRgba(0x10, 0x20, 0x40, 0x80)},
        {4, NSAlphaFirstBitmapFormat, "\x80\x08\x10\x20", qRgba(0x10, 0x20, 0x40, 0x80)},
        {4, NSAlphaNonpremultipliedBitmapFormat, "\x08\x10\x20\x80", qRgba(0x08, 0x10, 0x20, 0x80)},
        {4, NSAlphaFirstBitmapFormat | NSAlphaNonpremultipliedBitmapFormat, "\x80\x08\x10\x20",
         qRgba(0x08, 0x10, 0x20, 0x80)},
    };
    for (const Row &row : rows) {
        const QByteArray pixels = QByteArray(row.samples, row.samplesPerPixel).repeated(3);
        const BitmapImageRep bitmap{.pixelsWide = 3,
                                    .pixelsHigh = 2,
                                    .samplesPerPixel = row.samplesPerPixel,
                                    .bitsPerPixel = 8 * row.samplesPerPixel,
                                    .bytesPerRow = pixels.size() + 5,
                                    .bitmapFormat = row.format,
                                    .bitmapData = pixels + "\x99\x99\x99\x99\x99" + pixels};
        const QImage image = bitmap.image();
        ASSERT_EQ(image.size(), QSize(3, 2));
        for (int pixel = 0; pixel < 6; ++pixel)
            EXPECT_EQ(image.pixelColor(pixel % 3, pixel / 3).rgba(), row.colour)
                << row.samplesPerPixel << " samples, format " << row.format.toInt();
    }
}

TEST(BitmapImageRep, MakesNoImageOfADescriptionThatDoesNotFit) {
    struct Row {
        const char *what;
        void (*change)(BitmapImageRep &bitmap);
    };
    const Row rows[] = {
        {"planar", [](BitmapImageRep &bitmap) { bitmap.isPlanar = true; }},
        {"16 bits per sample", [](BitmapImageRep &bitmap) { bitmap.bitsPerSample = 16; }},
        {"two samples", [](BitmapImageRep &bitmap) { bitmap.samplesPerPixel = 2; }},
        {"padded pixels", [](BitmapImageRep &bitmap) { bitmap.samplesPerPixel = 3; }},
        {"a missing byte", [](BitmapImageRep &bitmap) { bitmap.bitmapData.chop(1); }},
        {"no bytes", [](BitmapImageRep &bitmap) { bitmap.bitmapData.clear(); }},
        {"a row too many", [](BitmapImageRep &bitmap) { ++bitmap.pixelsHigh; }},
        {"short rows", [](BitmapImageRep &bitmap) { --bitmap.bytesPerRow; }},
        {"negative rows", [](BitmapImageRep &bitmap) { bitmap.bytesPerRow = -36; }},
        {"no width", [](BitmapImageRep &bitmap) { bitmap.pixelsWide = 0; }},
        {"negative width", [](BitmapImageRep &bitmap) { bitmap.pixelsWide = -1; }},
        {"negative height", [](BitmapImageRep &bitmap) { bitmap.pixelsHigh = INT32_MIN; }},
        {"huge samples", [](BitmapImageRep &bitmap) { bitmap.samplesPerPixel = INT32_MAX; }},
    };
    for (const Row &row : rows) {
        BitmapImageRep bitmap =
            BitmapImageRep::fromImage(colouredImage(QImage::Format_RGBA8888_Premultiplied));
        row.change(bitmap);
        EXPECT_TRUE(bitmap.image().isNull()) << row.what;
    }
}

} // namespace
