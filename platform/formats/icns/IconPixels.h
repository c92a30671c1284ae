// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/icns/IconElements.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>

/// The payloads of elements with 32-bit pixels: RGB, ARGB, PNG and JPEG 2000. Pixels are four
/// bytes, alpha, red, green, blue, not premultiplied, in row-major order. Any thread.
namespace MWCore {

/// Whether elements of @p type have 32-bit pixels.
[[nodiscard]] bool hasPixels(const IconElementType &type);

/// The bytes of all 32-bit pixels of an element.
[[nodiscard]] qsizetype pixelBytes(const IconElementType &type);

struct DecodedPixels {
    IconStorage storage = IconStorage::Unknown; ///< unknown if the payload is in no known form
    QImage image; ///< QImage::Format_RGBA8888, not premultiplied; null if the payload is damaged
    bool hasAlpha = false; ///< if not, every alpha is 0, and the mask element has the real ones
};

[[nodiscard]] DecodedPixels decodePixels(const IconElementType &type, QByteArrayView payload);

/// The pixels of an image in QImage::Format_RGBA8888 as bytes.
[[nodiscard]] QByteArray argbOf(const QImage &image);

/// Whether @p payload is a PNG or JPEG 2000 file that declares the size of such elements.
[[nodiscard]] bool isFileOfSize(const IconElementType &type, QByteArrayView payload);

/// The payload for @p pixels, of which there must be pixelBytes(): compressed RGB or ARGB, or PNG
/// made with @p pngEffort (PngEncoding.h). Empty if memory runs out.
[[nodiscard]] QByteArray encodePixels(const IconElementType &type, QByteArrayView pixels,
                                      int pngEffort);

} // namespace MWCore
