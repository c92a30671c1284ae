// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/BitmapImageRep.h"

#include "icons/BitmapRows.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include <QByteArray>
#include <QImage>
#include <QtEndian>

namespace MWCore {
namespace {

/// The format for the samples once alpha comes last; Format_Invalid if there is none.
QImage::Format imageFormat(const BitmapImageRep &bitmap) {
    if (bitmap.isPlanar || bitmap.bitsPerSample != 8 ||
        bitmap.bitsPerPixel != int64_t(bitmap.samplesPerPixel) * 8)
        return QImage::Format_Invalid;
    switch (bitmap.samplesPerPixel) {
    case 1:
        return QImage::Format_Grayscale8;
    case 3:
        return QImage::Format_RGB888;
    case 4:
        return bitmap.bitmapFormat.testFlag(NSAlphaNonpremultipliedBitmapFormat)
                   ? QImage::Format_RGBA8888
                   : QImage::Format_RGBA8888_Premultiplied;
    default:
        return QImage::Format_Invalid;
    }
}

void copyAlphaFirst(const uint8_t *source, int32_t pixels, uint8_t *target) {
    for (const uint8_t *end = source + qsizetype(pixels) * 4; source != end;
         source += 4, target += 4)
        qToBigEndian(std::rotl(qFromBigEndian<uint32_t>(source), 8), target);
}

} // namespace

BitmapImageRep BitmapImageRep::fromImage(const QImage &image) {
    const QImage pixels = image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    BitmapImageRep bitmap;
    bitmap.pixelsWide = pixels.width();
    bitmap.pixelsHigh = pixels.height();
    bitmap.bytesPerRow = pixels.bytesPerLine();
    bitmap.bitmapData =
        QByteArray(reinterpret_cast<const char *>(pixels.constBits()), pixels.sizeInBytes());
    return bitmap;
}

QImage BitmapImageRep::image() const {
    const QImage::Format format = imageFormat(*this);
    const auto rows = rowsOf(*this);
    if (format == QImage::Format_Invalid || !rows)
        return {};
    QImage image(pixelsWide, pixelsHigh, format);
    const bool isAlphaFirst =
        samplesPerPixel == 4 && bitmapFormat.testFlag(NSAlphaFirstBitmapFormat);
    for (int32_t y = 0; y < image.height(); ++y) {
        if (isAlphaFirst)
            copyAlphaFirst(rows->row(y), pixelsWide, image.scanLine(y));
        else
            std::copy_n(rows->row(y), rows->length, image.scanLine(y));
    }
    return image;
}

} // namespace MWCore
