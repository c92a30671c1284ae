// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <cstdint>

#include <QByteArray>
#include <QFlags>
#include <QImage>

namespace MWCore {

enum NSBitmapFormat : uint32_t {
    NSAlphaFirstBitmapFormat = 1 << 0,
    NSAlphaNonpremultipliedBitmapFormat = 1 << 1,
};
Q_DECLARE_FLAGS(NSBitmapFormats, NSBitmapFormat)
Q_DECLARE_OPERATORS_FOR_FLAGS(NSBitmapFormats)

/// Pixels and a description of their layout. Colour samples are red, green, blue and, unless the
/// format says otherwise, then alpha, by which the others are multiplied. A plain value.
struct MWCORE_EXPORT BitmapImageRep {
    int32_t pixelsWide = 0;
    int32_t pixelsHigh = 0;
    int32_t bitsPerSample = 8;
    int32_t samplesPerPixel = 4;
    int32_t bitsPerPixel = 32;
    bool isPlanar = false;     ///< one plane per sample, one after another
    qsizetype bytesPerRow = 0; ///< from one row to the next
    NSBitmapFormats bitmapFormat;
    QByteArray bitmapData; ///< rows from top to bottom

    /// The pixels of @p image as 8-bit RGBA, premultiplied.
    [[nodiscard]] static BitmapImageRep fromImage(const QImage &image);

    /// The image; null if the layout is not one of 8-bit gray, RGB or RGBA, or pixels are missing.
    [[nodiscard]] QImage image() const;
};

} // namespace MWCore
