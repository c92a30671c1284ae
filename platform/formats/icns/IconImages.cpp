// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconImages.h"

#include "platform/formats/icns/IconElements.h"
#include "platform/formats/icns/IconPalettes.h"
#include "platform/formats/icns/IconPixels.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace MWCore {
namespace {

constexpr uint8_t kOpaque = 255;
constexpr int kRgbaLength = 4; ///< bytes of a pixel
constexpr int kAlpha = 3;      ///< index of its alpha

qsizetype pixelCount(const IconElementType &type) {
    return qsizetype(type.size.width()) * type.size.height();
}

/// The bit of a pixel in a plane of one bit per pixel, leftmost in the highest bit.
bool bitAt(QByteArrayView plane, qsizetype index) {
    constexpr qsizetype kBits = 8;
    return uint8_t(plane[index / kBits]) >> (kBits - 1 - index % kBits) & 1;
}

/// The payload of an element of @p encoding and @p size; nullopt if there is none of full length.
std::optional<QByteArrayView> plainPayload(const IconContainer &family, IconEncoding encoding,
                                           QSize size) {
    for (const IconElementType &type : iconElementTypes()) {
        if (type.encoding != encoding || type.size != size)
            continue;
        const IconContainer::Element *const element = family.find(type.type);
        if (element && element->length >= fixedLength(type))
            return family.payload(*element);
    }
    return std::nullopt;
}

/// The alpha of every pixel of that size. RGB pixels take it from the 8-bit mask, 1-bit and indexed
/// ones from the 1-bit mask, as other programs do; from the other mask if theirs is missing, and
/// they are opaque without any.
std::vector<uint8_t> alphaOf(const IconContainer &family, const IconElementType &type) {
    const qsizetype pixels = pixelCount(type);
    std::vector<uint8_t> alpha(static_cast<std::size_t>(pixels), kOpaque);
    const auto mask = plainPayload(family, IconEncoding::Mask, type.size);
    const auto bitmap = plainPayload(family, IconEncoding::Bitmap, type.size);
    if (mask && (hasPixels(type) || !bitmap)) {
        std::copy_n(mask->begin(), pixels, alpha.begin());
    } else if (bitmap) {
        const QByteArrayView plane = bitmap->last(bitmap->size() / 2);
        for (qsizetype index = 0; index < pixels; ++index)
            alpha[static_cast<std::size_t>(index)] = bitAt(plane, index) ? kOpaque : 0;
    }
    return alpha;
}

/// The image of the colours that @p colourAt returns for each index of a pixel.
template <typename ColourAt>
QImage imageOf(const IconElementType &type, const std::vector<uint8_t> &alpha, ColourAt colourAt) {
    QImage image(type.size, QImage::Format_RGBA8888); // its rows are not padded
    if (image.isNull())
        return image;
    uchar *pixel = image.bits();
    for (qsizetype index = 0; index < pixelCount(type); ++index, pixel += kRgbaLength) {
        const QRgb colour = colourAt(index);
        pixel[0] = uchar(qRed(colour));
        pixel[1] = uchar(qGreen(colour));
        pixel[2] = uchar(qBlue(colour));
        pixel[kAlpha] = alpha[static_cast<std::size_t>(index)];
    }
    return image;
}

QImage imageOfPixels(const IconContainer &family, const IconElementType &type,
                     QByteArrayView payload) {
    DecodedPixels pixels = decodePixels(type, payload);
    if (pixels.hasAlpha || pixels.image.isNull())
        return std::move(pixels.image);
    uchar *alpha = pixels.image.bits() + kAlpha; // the rows of this format are not padded
    for (const uint8_t value : alphaOf(family, type)) {
        *alpha = value;
        alpha += kRgbaLength;
    }
    return std::move(pixels.image);
}

/// 1-bit pixels are black where their bit is set.
QRgb colourOfBit(QByteArrayView plane, qsizetype index) {
    return bitAt(plane, index) ? qRgb(0, 0, 0) : qRgb(kOpaque, kOpaque, kOpaque);
}

} // namespace

QImage elementImage(const IconContainer &family, const IconContainer::Element &element) {
    const IconElementType *const type = iconElementType(element.type);
    const QByteArrayView payload = family.payload(element);
    if (!type || payload.size() < fixedLength(*type).value_or(0))
        return {};
    switch (type->encoding) {
    case IconEncoding::Rgb:
    case IconEncoding::PaddedRgb:
    case IconEncoding::Argb:
    case IconEncoding::File:
        return imageOfPixels(family, *type, payload);
    case IconEncoding::Plain:
    case IconEncoding::Bitmap:
        return imageOf(*type, alphaOf(family, *type),
                       [payload](qsizetype index) { return colourOfBit(payload, index); });
    case IconEncoding::Indexed4:
        return imageOf(*type, alphaOf(family, *type), [payload](qsizetype index) {
            const auto pair = uint8_t(payload[index / 2]);
            return iconPalette4()[index % 2 == 0 ? pair >> 4 : pair & 0xF];
        });
    case IconEncoding::Indexed8:
        return imageOf(*type, alphaOf(family, *type), [payload](qsizetype index) {
            return iconPalette8()[uint8_t(payload[index])];
        });
    default:
        return {};
    }
}

} // namespace MWCore
