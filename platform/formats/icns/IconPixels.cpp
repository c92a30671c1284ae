// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconPixels.h"

#include "platform/formats/icns/ChannelRuns.h"
#include "platform/pictures/Jpeg2000.h"
#include "platform/pictures/Png.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <vector>

#include <QImage>

namespace MWCore {
namespace {

constexpr int kPixelLength = 4; ///< bytes
constexpr int kRgbLength = 3;   ///< bytes of a pixel without alpha
constexpr QByteArrayView kArgbMagic = "ARGB";
constexpr qsizetype kPadding = 4; ///< bytes before the channels of a padded RGB element

qsizetype pixelCount(const IconElementType &type) {
    return qsizetype(type.size.width()) * type.size.height();
}

/// Three or four channels one after another, interleaved to pixels. Three get alpha 0.
QByteArray interleaved(std::span<const uint8_t> channels, int count) {
    const std::size_t pixels = channels.size() / static_cast<std::size_t>(count);
    const bool hasAlpha = count == kPixelLength;
    const std::span<const uint8_t> colours = hasAlpha ? channels.subspan(pixels) : channels;
    QByteArray bytes(qsizetype(pixels) * kPixelLength, Qt::Uninitialized);
    char *target = bytes.data();
    for (std::size_t index = 0; index < pixels; ++index, target += kPixelLength) {
        target[0] = hasAlpha ? char(channels[index]) : '\0';
        target[1] = char(colours[index]);
        target[2] = char(colours[pixels + index]);
        target[3] = char(colours[2 * pixels + index]);
    }
    return bytes;
}

/// Pixels that some program stored without compression: red, green, blue, after alpha or an unused
/// byte or after none. nullopt if they have another length.
std::optional<QByteArray> uncompressed(QByteArrayView bytes, qsizetype pixels, bool hasAlpha) {
    if (bytes.size() == pixels * kPixelLength && hasAlpha)
        return bytes.toByteArray();
    const qsizetype stored = bytes.size() / pixels;
    if (bytes.size() % pixels != 0 || (stored != kRgbLength && stored != kPixelLength))
        return std::nullopt;
    QByteArray result(pixels * kPixelLength, '\0');
    for (qsizetype index = 0; index < pixels; ++index)
        std::copy_n(bytes.data() + (index + 1) * stored - kRgbLength, kRgbLength,
                    result.data() + index * kPixelLength + 1);
    return result;
}

QByteArray argbOf(const QImage &image) {
    QByteArray bytes(qsizetype(image.width()) * image.height() * kPixelLength, Qt::Uninitialized);
    char *target = bytes.data();
    for (int row = 0; row < image.height(); ++row) {
        const uchar *pixel = image.constScanLine(row);
        for (int column = 0; column < image.width(); ++column, pixel += kPixelLength) {
            target[0] = char(pixel[3]);
            std::copy_n(pixel, kRgbLength, target + 1);
            target += kPixelLength;
        }
    }
    return bytes;
}

/// @p count channels. Compressed bytes may by chance be as long as uncompressed ones; what
/// decompresses to exactly the pixels is compressed.
DecodedPixels decodeChannels(QByteArrayView bytes, int count, qsizetype pixels) {
    const bool hasAlpha = count == kPixelLength;
    std::vector<uint8_t> channels(static_cast<std::size_t>(pixels * count));
    const RunsFit fit = decompressRuns(bytes, channels);
    if (fit != RunsFit::Exact)
        if (auto plain = uncompressed(bytes, pixels, hasAlpha))
            return {IconStorage::Uncompressed, std::move(plain), hasAlpha};
    if (fit == RunsFit::TooShort)
        return {IconStorage::Compressed, std::nullopt, hasAlpha};
    return {IconStorage::Compressed, interleaved(channels, count), hasAlpha};
}

DecodedPixels decodePaddedRgb(QByteArrayView payload, qsizetype pixels) {
    const QByteArrayView channels = payload.sliced(std::min(kPadding, payload.size()));
    DecodedPixels padded = decodeChannels(channels, kRgbLength, pixels);
    return padded.bytes ? std::move(padded) : decodeChannels(payload, kRgbLength, pixels);
}

DecodedPixels decodeFile(IconStorage storage, const std::optional<QImage> &image) {
    constexpr bool kHasAlpha = true;
    return {storage, image ? std::optional(argbOf(*image)) : std::nullopt, kHasAlpha};
}

/// Whether a reader that recognises uncompressed pixels by their length would take the payload for
/// them, with or without the four bytes that it begins with.
bool looksUncompressed(qsizetype length, qsizetype pixels) {
    const auto isLength = [=](qsizetype bytes) {
        return bytes == pixels * kRgbLength || bytes == pixels * kPixelLength;
    };
    return isLength(length) || isLength(length - kPadding);
}

using AppendChannel = void (*)(QByteArray &, std::span<const uint8_t>);

/// @p first appends the first of the channels; the shortest encoding is used for the others.
QByteArray compressed(QByteArrayView pixels, int count, QByteArray start, AppendChannel first) {
    const qsizetype length = pixels.size() / kPixelLength;
    std::vector<uint8_t> channel(static_cast<std::size_t>(length));
    for (int index = kPixelLength - count; index < kPixelLength; ++index) {
        for (qsizetype at = 0; at < length; ++at)
            channel[static_cast<std::size_t>(at)] = uint8_t(pixels[at * kPixelLength + index]);
        const bool isFirst = index == kPixelLength - count;
        (isFirst ? first : appendChannelRuns)(start, channel);
    }
    return start;
}

QByteArray compressed(QByteArrayView pixels, int count, const QByteArray &start) {
    const QByteArray shortest = compressed(pixels, count, start, appendChannelRuns);
    if (!looksUncompressed(shortest.size(), pixels.size() / kPixelLength))
        return shortest;
    return compressed(pixels, count, start, appendChannelLiterals);
}

QByteArray pngOf(const IconElementType &type, QByteArrayView pixels, int effort) {
    QImage image(type.size, QImage::Format_RGBA8888);
    if (image.isNull())
        return {};
    const char *source = pixels.data();
    for (int row = 0; row < image.height(); ++row) {
        uchar *pixel = image.scanLine(row);
        for (int column = 0; column < image.width(); ++column, pixel += kPixelLength) {
            std::copy_n(source + 1, kRgbLength, pixel);
            pixel[3] = uchar(source[0]);
            source += kPixelLength;
        }
    }
    return encodePng(image, effort);
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
    const qsizetype pixels = pixelCount(type);
    if (type.encoding == IconEncoding::PaddedRgb)
        return decodePaddedRgb(payload, pixels);
    if (type.encoding == IconEncoding::Rgb)
        return decodeChannels(payload, kRgbLength, pixels);
    if (!hasPixels(type))
        return {};
    if (isPng(payload))
        return decodeFile(IconStorage::Png, decodePng(payload, type.size));
    if (isJpeg2000(payload))
        return decodeFile(IconStorage::Jpeg2000, decodeJpeg2000(payload, type.size));
    if (payload.startsWith(kArgbMagic))
        return decodeChannels(payload.sliced(kArgbMagic.size()), kPixelLength, pixels);
    return type.mask == 0 ? DecodedPixels{} : decodeChannels(payload, kRgbLength, pixels);
}

bool isFileOfSize(const IconElementType &type, QByteArrayView payload) {
    return type.encoding == IconEncoding::File &&
           (pngSize(payload) == type.size || jpeg2000Size(payload) == type.size);
}

QByteArray encodePixels(const IconElementType &type, QByteArrayView pixels, int pngEffort) {
    switch (type.encoding) {
    case IconEncoding::Rgb:
        return compressed(pixels, kRgbLength, {});
    case IconEncoding::PaddedRgb:
        return compressed(pixels, kRgbLength, QByteArray(kPadding, '\0'));
    case IconEncoding::Argb:
        return compressed(pixels, kPixelLength, kArgbMagic.toByteArray());
    default:
        return pngOf(type, pixels, pngEffort);
    }
}

} // namespace MWCore
