// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Picture.h"

#include "platform/files/RegularFile.h"
#include "platform/pictures/ImageScaling.h"
#include "platform/pictures/Jpeg2000.h"
#include "platform/pictures/PlainPng.h"
#include "platform/pictures/Png.h"
#include "platform/pictures/SvgDrawing.h"

#include <algorithm>
#include <utility>

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>

namespace MWCore {
namespace {

constexpr int64_t kLargestFile = int64_t{1} << 28;
constexpr int64_t kLargestDrawing = int64_t{1} << 21;

/// Whether an image of this size is decoded: also what Qt permits itself to allocate.
bool isWithinLimits(QSize size) {
    constexpr int64_t kBytesPerPixel = 4;
    constexpr int64_t kMegabyte = 1 << 20;
    const int64_t bytes = kBytesPerPixel * size.width() * size.height();
    const int64_t most = kMegabyte * QImageReader::allocationLimit();
    return size.width() <= Picture::kLargestSide && size.height() <= Picture::kLargestSide &&
           (most == 0 || bytes <= most);
}

/// Formats that Qt's plug-ins read without limits: a drawing may refer to other files, and the
/// loops of an animation (MNG) may go on for years before the first image.
bool isUnsafe(const QByteArray &format) {
    return format.startsWith("svg") || format == "mng";
}

/// Moves @p reader to the largest of the images in its file and returns the size; empty if the
/// format gives no sizes before decoding.
QSize moveToLargest(QImageReader &reader) {
    constexpr int kMostImages = 256;
    const auto area = [](QSize size) { return int64_t{size.width()} * size.height(); };
    QSize largest = reader.size();
    int index = 0;
    for (int other = 1; other < std::min(reader.imageCount(), kMostImages); ++other)
        if (reader.jumpToImage(other) && area(reader.size()) > area(largest)) {
            largest = reader.size();
            index = other;
        }
    if (reader.imageCount() > 1)
        reader.jumpToImage(index);
    return largest;
}

/// Decodes a file in a format of Qt's. Null on failure, with the cause in @p status.
QImage decoded(QByteArray bytes, OSStatus *status) {
    *status = mapReadErr;
    const bool isPngFile = isPng(bytes);
    if (isPngFile && !isWithinLimits(pngSize(bytes).value_or(QSize()))) {
        *status = fileBoundsErr;
        return {};
    }
    if (auto image = isPngFile ? decodePlainPng(bytes) : std::nullopt) {
        *status = noErr;
        return *std::move(image);
    }
    if (isPngFile)
        bytes = essentialPng(bytes, PngColour::Keep);
    if (bytes.isEmpty())
        return {};
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, isPngFile ? "png" : "");
    reader.setAutoDetectImageFormat(!isPngFile);
    reader.setAutoTransform(true);
    if (isUnsafe(reader.format()))
        return {};
    if (!isWithinLimits(moveToLargest(reader))) {
        *status = fileBoundsErr;
        return {};
    }
    QImage image = reader.read();
    *status = image.isNull() ? mapReadErr : noErr;
    return image;
}

/// The same for JPEG 2000.
QImage decodedJpeg2000(const QByteArray &bytes, OSStatus *status) {
    const QSize size = jpeg2000Size(bytes).value_or(QSize());
    *status = isWithinLimits(size) ? mapReadErr : fileBoundsErr;
    const auto image = *status == mapReadErr ? decodeJpeg2000(bytes, size) : std::nullopt;
    if (image)
        *status = noErr;
    return image.value_or(QImage());
}

QImage inSrgb(const QImage &image) {
    const QColorSpace srgb(QColorSpace::SRgb);
    if (!image.colorSpace().isValid() || image.colorSpace() == srgb)
        return image;
    return image.convertToFormat(QImage::Format_RGBA8888).convertedToColorSpace(srgb);
}

/// @p image in the middle of a transparent square.
QImage centred(const QImage &image, int width) {
    QImage square(width, width, QImage::Format_RGBA8888);
    if (image.isNull() || square.isNull())
        return {};
    square.fill(Qt::transparent);
    const qsizetype left = (width - image.width()) / 2;
    const int top = (width - image.height()) / 2;
    for (int y = 0; y < image.height(); ++y)
        std::copy_n(image.constScanLine(y), 4 * image.width(), square.scanLine(top + y) + 4 * left);
    return square;
}

} // namespace

Picture::Picture(const QImage &image) : pixels_(inSrgb(image)), size_(image.size()) {}

std::optional<Picture> Picture::read(const QByteArray &path, OSStatus *status) {
    const auto bytes = readRegularFile(path, kLargestFile, FinalLink::Follow, status);
    return bytes ? fromBytes(*bytes, status) : std::nullopt;
}

std::optional<Picture> Picture::fromBytes(const QByteArray &bytes, OSStatus *status) {
    if (startsLikeSvg(bytes))
        return fromDrawing(bytes, status);
    const QImage image =
        isJpeg2000(bytes) ? decodedJpeg2000(bytes, status) : decoded(bytes, status);
    return image.isNull() ? std::nullopt : std::optional(Picture(image));
}

std::optional<Picture> Picture::fromDrawing(const QByteArray &bytes, OSStatus *status) {
    Picture picture;
    picture.hasTexts_ = hasSvgTexts();
    *status = bytes.size() <= kLargestDrawing ? mapReadErr : fileBoundsErr;
    auto harmless = *status == mapReadErr ? harmlessSvg(bytes) : std::nullopt;
    picture.size_ = harmless ? svgSize(*harmless) : QSize();
    if (picture.size_.isEmpty())
        return std::nullopt;
    picture.drawing_ = bytes;
    picture.harmless_ = std::make_shared<const SvgDrawing>(*std::move(harmless));
    *status = noErr;
    return picture;
}

QImage Picture::squareImage(int width) const {
    if (width < 1 || width > kLargestSide)
        return {};
    if (!isVector())
        return fittedImage(pixels_, width);
    const QSize size = fittedSize(size_, width);
    if (hasTexts_ == hasSvgTexts())
        return centred(svgImage(*harmless_, size), width);
    const auto drawing = harmlessSvg(drawing_);
    return drawing ? centred(svgImage(*drawing, size), width) : QImage();
}

} // namespace MWCore
