// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconPixels.h"

#include "platform/formats/icns/ChannelRuns.h"
#include "platform/pictures/Jpeg2000.h"
#include "platform/pictures/Png.h"
#include "platform/pictures/PngEncoding.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <vector>

#include <QImage>

namespace MWCore {
namespace {

constexpr int kPixelLength = 4; ///< bytes
constexpr int kRgbLength = 3;   ///< bytes of a pixel without alpha
constexpr int kAlpha = 3;       ///< index of alpha in a pixel of an image
constexpr QByteArrayView kArgbMagic = "ARGB";
constexpr qsizetype kPadding = 4; ///< bytes before the channels of a padded RGB element

qsizetype pixelCount(const IconElementType &type) {
    return qsizetype(type.size.width()) * type.size.height();
}

/// An image of which each pixel is set, by its index in row-major order, by @p set.
template <typename Set> QImage imageOf(QSize size, Set set) {
    QImage image(size, QImage::Format_RGBA8888); // its rows are not padded
    if (image.isNull())
        return image;
    uchar *pixel = image.bits();
    const std::size_t count = std::size_t(size.width()) * std::size_t(size.height());
    for (std::size_t index = 0; index < count; ++index, pixel += kPixelLength)
        set(pixel, index);
    return image;
}

/// Three or four channels one after another; of four the first is alpha.
QImage interleaved(QSize size, std::span<const uint8_t> channels, bool hasAlpha) {
    const std::size_t pixels = std::size_t(size.width()) * std::size_t(size.height());
    const std::span<const uint8_t> colours = hasAlpha ? channels.subspan(pixels) : channels;
    return imageOf(size, [=](uchar *pixel, std::size_t index) {
        for (std::size_t channel = 0; channel < kRgbLength; ++channel)
            pixel[channel] = colours[channel * pixels + index];
        pixel[kAlpha] = hasAlpha ? channels[index] : 0;
    });
}

/// Pixels that some program stored without compression: red, green, blue, after alpha or an unused
/// byte or after none. Null if they have another length.
QImage uncompressed(QSize size, QByteArrayView bytes, bool hasAlpha) {
    const qsizetype pixels = qsizetype(size.width()) * size.height();
    const qsizetype stored = bytes.size() / pixels;
    const bool isRgb = stored == kRgbLength && !hasAlpha;
    if (bytes.size() % pixels != 0 || (stored != kPixelLength && !isRgb))
        return {};
    return imageOf(size, [=](uchar *pixel, std::size_t index) {
        const char *const end = bytes.data() + (qsizetype(index) + 1) * stored;
        std::copy_n(end - kRgbLength, kRgbLength, pixel);
        pixel[kAlpha] = hasAlpha ? uchar(end[-kPixelLength]) : 0;
    });
}

/// Channels with or without alpha. Compressed bytes may by chance be as long as uncompressed ones;
/// what decompresses to exactly the pixels is compressed.
DecodedPixels decodeChannels(QSize size, QByteArrayView bytes, bool hasAlpha) {
    const std::size_t pixels = std::size_t(size.width()) * std::size_t(size.height());
    std::vector<uint8_t> channels(pixels * std::size_t(hasAlpha ? kPixelLength : kRgbLength));
    const RunsFit fit = decompressRuns(bytes, channels);
    if (fit != RunsFit::Exact)
        if (QImage plain = uncompressed(size, bytes, hasAlpha); !plain.isNull())
            return {IconStorage::Uncompressed, std::move(plain), hasAlpha};
    if (fit == RunsFit::TooShort)
        return {IconStorage::Compressed, {}, hasAlpha};
    return {IconStorage::Compressed, interleaved(size, channels, hasAlpha), hasAlpha};
}

DecodedPixels decodeRgb(QSize size, QByteArrayView bytes) {
    constexpr bool kHasAlpha = false;
    return decodeChannels(size, bytes, kHasAlpha);
}

DecodedPixels decodePaddedRgb(QSize size, QByteArrayView payload) {
    DecodedPixels padded = decodeRgb(size, payload.sliced(std::min(kPadding, payload.size())));
    return padded.image.isNull() ? decodeRgb(size, payload) : std::move(padded);
}

DecodedPixels decodeFile(IconStorage storage, const std::optional<QImage> &image) {
    constexpr bool kHasAlpha = true;
    return {storage, image.value_or(QImage()), kHasAlpha};
}

/// Whether a reader that recognises uncompressed pixels by their length would take the payload for
/// them, with or without the four bytes that it begins with.
bool looksUncompressed(qsizetype length, qsizetype pixels) {
    const auto isLength = [=](qsizetype bytes) {
        return bytes == pixels * kRgbLength || bytes == pixels * kPixelLength;
    };
    return isLength(length) || isLength(length - kPadding);
}

/// Whether Qt's plug-in would take an ARGB payload for indexed pixels: it reads the digits of a
/// type that it does not know, such as 'ic04', as a number of bits per pixel, 1 if there are none,
/// and shows what has the length of an icon of 16, 32, 48 ... pixels with that depth, once or
/// twice.
bool looksIndexed(const IconElementType &type, qsizetype length) {
    constexpr qsizetype kUnit = 16 * 16 / 8; // bytes of the smallest icon, per bit of a pixel
    const auto lastCharacter = static_cast<char>(type.type);
    const bool isDigit = lastCharacter >= '1' && lastCharacter <= '9';
    const qsizetype smallest = kUnit * (isDigit ? lastCharacter - '0' : 1);
    for (qsizetype side = 1; smallest * side * side <= length; ++side)
        if (length == smallest * side * side || length == 2 * smallest * side * side)
            return true;
    return false;
}

/// Whether some reader would take the payload for another encoding because of its length.
bool isMisread(const IconElementType &type, qsizetype length) {
    return looksUncompressed(length, pixelCount(type)) ||
           (type.encoding == IconEncoding::Argb && looksIndexed(type, length));
}

/// The first @p literals of the channels are encoded without runs, the others as short as possible.
QByteArray compressed(QByteArrayView pixels, int count, QByteArray start, int literals) {
    const qsizetype length = pixels.size() / kPixelLength;
    const int first = kPixelLength - count;
    std::vector<uint8_t> channel(static_cast<std::size_t>(length));
    for (int index = first; index < kPixelLength; ++index) {
        for (qsizetype at = 0; at < length; ++at)
            channel[static_cast<std::size_t>(at)] = uint8_t(pixels[at * kPixelLength + index]);
        (index - first < literals ? appendChannelLiterals : appendChannelRuns)(start, channel);
    }
    return start;
}

/// As short as possible without being misread, which no payload of literals alone is.
QByteArray compressed(const IconElementType &type, QByteArrayView pixels, int count,
                      const QByteArray &start) {
    int literals = 0;
    QByteArray payload = compressed(pixels, count, start, literals);
    while (isMisread(type, payload.size()) && literals < count)
        payload = compressed(pixels, count, start, ++literals);
    return payload;
}

QByteArray pngOf(const IconElementType &type, QByteArrayView pixels, int effort) {
    const QImage image = imageOf(type.size, [pixels](uchar *pixel, std::size_t index) {
        const char *const source = pixels.data() + index * kPixelLength;
        std::copy_n(source + 1, kRgbLength, pixel);
        pixel[kAlpha] = uchar(source[0]);
    });
    return image.isNull() ? QByteArray() : encodePng(image, effort);
}

} // namespace

bool hasPixels(const IconElementType &type) {
    using enum IconEncoding;
    constexpr IconEncoding kEncodings[] = {Rgb, PaddedRgb, Argb, File};
    return std::ranges::find(kEncodings, type.encoding) != std::end(kEncodings);
}

qsizetype pixelBytes(const IconElementType &type) {
    return pixelCount(type) * kPixelLength;
}

DecodedPixels decodePixels(const IconElementType &type, QByteArrayView payload) {
    constexpr bool kHasAlpha = true;
    if (type.encoding == IconEncoding::PaddedRgb)
        return decodePaddedRgb(type.size, payload);
    if (type.encoding == IconEncoding::Rgb)
        return decodeRgb(type.size, payload);
    if (!hasPixels(type))
        return {};
    if (isPng(payload))
        return decodeFile(IconStorage::Png, decodePng(payload, type.size));
    if (isJpeg2000(payload))
        return decodeFile(IconStorage::Jpeg2000, decodeJpeg2000(payload, type.size));
    if (payload.startsWith(kArgbMagic))
        return decodeChannels(type.size, payload.sliced(kArgbMagic.size()), kHasAlpha);
    return type.mask == 0 ? DecodedPixels{} : decodeRgb(type.size, payload);
}

QByteArray argbOf(const QImage &image) {
    QByteArray bytes(image.sizeInBytes(), Qt::Uninitialized); // the rows are not padded
    const uchar *pixel = image.constBits();
    for (char *target = bytes.data(); target < bytes.end(); target += kPixelLength) {
        target[0] = char(pixel[kAlpha]);
        std::copy_n(pixel, kRgbLength, target + 1);
        pixel += kPixelLength;
    }
    return bytes;
}

bool isFileOfSize(const IconElementType &type, QByteArrayView payload) {
    return type.encoding == IconEncoding::File &&
           (pngSize(payload) == type.size || jpeg2000Size(payload) == type.size);
}

QByteArray encodePixels(const IconElementType &type, QByteArrayView pixels, int pngEffort) {
    switch (type.encoding) {
    case IconEncoding::Rgb:
        return compressed(type, pixels, kRgbLength, {});
    case IconEncoding::PaddedRgb:
        return compressed(type, pixels, kRgbLength, QByteArray(kPadding, '\0'));
    case IconEncoding::Argb:
        return compressed(type, pixels, kPixelLength, kArgbMagic.toByteArray());
    default:
        return pngOf(type, pixels, pngEffort);
    }
}

} // namespace MWCore
