// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"

#include "platform/files/AtomicFile.h"
#include "platform/formats/icns/IconContainer.h"
#include "platform/formats/icns/IconImages.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/Log.h"
#include "platform/pictures/ImageScaling.h"
#include "platform/references/FSSpec.h"
#include "platform/workspace/icons/IconServices.h"

#include <algorithm>
#include <iterator>

namespace MWCore {
namespace {

using Packer = std::optional<QByteArray> (*)(const BitmapImageRep &, int32_t);

/// An element that can be set from a bitmap.
struct PackedElement {
    uint32_t type;
    int32_t pixels; ///< width and height
    Packer packer;
};

// clang-format off
const PackedElement kPackedElements[] = {
    {fourCharCode("ic09"), 512, &IconFamily::get32BitDataFromBitmapImageRep},
    {fourCharCode("ic08"), 256, &IconFamily::get32BitDataFromBitmapImageRep},
    {fourCharCode("it32"), 128, &IconFamily::get32BitDataFromBitmapImageRep},
    {fourCharCode("t8mk"), 128, &IconFamily::get8BitMaskFromBitmapImageRep},
    {fourCharCode("il32"),  32, &IconFamily::get32BitDataFromBitmapImageRep},
    {fourCharCode("icl8"),  32, &IconFamily::get8BitDataFromBitmapImageRep},
    {fourCharCode("l8mk"),  32, &IconFamily::get8BitMaskFromBitmapImageRep},
    {fourCharCode("ICN#"),  32, &IconFamily::get1BitMaskFromBitmapImageRep},
    {fourCharCode("is32"),  16, &IconFamily::get32BitDataFromBitmapImageRep},
    {fourCharCode("ics8"),  16, &IconFamily::get8BitDataFromBitmapImageRep},
    {fourCharCode("s8mk"),  16, &IconFamily::get8BitMaskFromBitmapImageRep},
    {fourCharCode("ics#"),  16, &IconFamily::get1BitMaskFromBitmapImageRep},
};

/// The elements that bitmapImageRepWithAlphaForIconFamilyElement() reads.
constexpr uint32_t kReadElements[] = {
    fourCharCode("ic09"), fourCharCode("ic08"), fourCharCode("it32"),
    fourCharCode("ih32"), fourCharCode("il32"), fourCharCode("is32"),
};
// clang-format on

constexpr int kPixelLength = 4; ///< bytes: alpha, red, green, blue

/// Sets the alpha of each pixel of an RGB element from its mask.
void applyMask(const IconFamilyHandle &family, uint32_t maskType, QByteArray &pixels) {
    constexpr char kOpaque = '\xFF';
    OSStatus status = noErr;
    const auto mask = GetIconFamilyData(family, maskType, &status);
    char *const bytes = pixels.data();
    for (qsizetype index = 0; index < pixels.size() / kPixelLength; ++index) {
        char &alpha = bytes[index * kPixelLength];
        alpha = mask ? static_cast<char>(alpha | mask->at(index)) : kOpaque;
    }
}

IconFamily::Ptr familyOf(const IconRef &icon) {
    IconFamilyHandle family;
    if (IconRefToIconFamily(icon, kSelectorAllAvailableData, &family) != noErr || family.isEmpty())
        return {};
    return IconFamily::initWithIconFamilyHandle(std::move(family));
}

} // namespace

IconFamily::Ptr IconFamily::init() {
    return Ptr(new IconFamily(IconFamilyHandle()));
}

IconFamily::Ptr IconFamily::initWithData(const QByteArray &data) {
    return Ptr(new IconFamily(data));
}

IconFamily::Ptr IconFamily::initWithIconFamilyHandle(IconFamilyHandle handle) {
    return Ptr(new IconFamily(std::move(handle)));
}

IconFamily::Ptr IconFamily::initWithContentsOfFile(const QString &path) {
    FSRef file;
    IconFamilyHandle family;
    constexpr bool kCreate = false;
    if (!CarbonFSRefCreation::getFSRef(path, &file, kCreate) ||
        ReadIconFromFSRef(file, &family) != noErr)
        return {};
    return initWithIconFamilyHandle(std::move(family));
}

IconFamily::Ptr IconFamily::initWithIconOfFile(const QString &path) {
    FSRef file;
    IconRef icon;
    constexpr bool kCreate = false;
    if (!CarbonFSRefCreation::getFSRef(path, &file, kCreate) ||
        GetIconRefFromFileInfo(file, &icon) != noErr)
        return {};
    return familyOf(icon);
}

IconFamily::Ptr IconFamily::initWithSystemIcon(uint32_t fourByteCode) {
    IconRef icon;
    if (GetIconRef(kOnSystemDisk, kSystemIconsCreator, fourByteCode, &icon) != noErr)
        return {};
    return familyOf(icon);
}

IconFamily::Ptr
IconFamily::initWithThumbnailsOfImage(const QImage &image,
                                      NSImageInterpolation usingImageInterpolation) {
    QImage source = image; // the smaller sizes are made from the largest one
    Ptr family = init();
    BitmapImageRep bitmap;
    for (const PackedElement &element : kPackedElements) {
        if (bitmap.pixelsWide != element.pixels) {
            const bool isLargest = &element == kPackedElements;
            const QImage scaled = resampleImage(source, element.pixels, usingImageInterpolation);
            if (scaled.isNull() && isLargest)
                return {};
            bitmap = BitmapImageRep::fromImage(scaled);
            source = isLargest ? scaled : source;
        }
        if (bitmap.pixelsWide == element.pixels)
            (void)family->setIconFamilyElement(element.type, bitmap);
    }
    return family;
}

std::optional<BitmapImageRep>
IconFamily::bitmapImageRepWithAlphaForIconFamilyElement(uint32_t elementType) const {
    if (std::ranges::find(kReadElements, elementType) == std::end(kReadElements))
        return std::nullopt;
    OSStatus status = noErr;
    auto pixels = GetIconFamilyData(hIconFamily_, elementType, &status);
    if (!pixels)
        return std::nullopt;
    const IconElementType &type = *iconElementType(elementType);
    if (type.mask != 0)
        applyMask(hIconFamily_, type.mask, *pixels);
    BitmapImageRep bitmap;
    bitmap.pixelsWide = type.size.width();
    bitmap.pixelsHigh = type.size.height();
    bitmap.bytesPerRow = qsizetype(kPixelLength) * type.size.width();
    bitmap.bitmapFormat = NSAlphaFirstBitmapFormat;
    bitmap.bitmapData = std::move(*pixels);
    return bitmap;
}

IconImage IconFamily::imageWithAllReps() const {
    const IconContainer family(hIconFamily_);
    IconImage images;
    for (const IconContainer::Element &element : family.elements()) {
        const bool isFirst = family.find(element.type) == &element;
        if (QImage image = isFirst ? elementImage(family, element) : QImage(); !image.isNull())
            images.representations.push_back({element.type, std::move(image)});
    }
    return images;
}

QImage IconFamily::imageOfElement(uint32_t elementType) const {
    const IconContainer family(hIconFamily_);
    const IconContainer::Element *const element = family.findOnce(elementType);
    return element ? elementImage(family, *element) : QImage();
}

IconFamily::Ptr IconFamily::nestedFamily(uint32_t elementType) const {
    const IconContainer family(hIconFamily_);
    const IconElementType *const type = iconElementType(elementType);
    const IconContainer::Element *const element = family.findOnce(elementType);
    if (!element || !type || type->encoding != IconEncoding::Family)
        return {};
    return initWithIconFamilyHandle(familyFromNestedBytes(family.payload(*element)));
}

bool IconFamily::setNestedFamily(uint32_t elementType, const IconFamily &family) {
    const IconElementType *const type = iconElementType(elementType);
    if (!type || type->encoding != IconEncoding::Family)
        return false;
    if (family.hIconFamily_.isEmpty())
        return RemoveIconFamilyData(hIconFamily_, elementType) != mapReadErr;
    return SetIconFamilyData(hIconFamily_, elementType, nestedFamilyBytes(family.hIconFamily_)) ==
           noErr;
}

bool IconFamily::setIconFamilyElement(uint32_t elementType,
                                      const BitmapImageRep &fromBitmapImageRep) {
    const auto *const element =
        std::ranges::find(kPackedElements, elementType, &PackedElement::type);
    if (element == std::end(kPackedElements))
        return false;
    const auto payload = element->packer(fromBitmapImageRep, element->pixels);
    if (!payload) {
        qCWarning(mwcoreLog, "Null data returned to setIconFamilyElement:fromBitmapImageRep:");
        return false;
    }
    const OSStatus status = SetIconFamilyData(hIconFamily_, elementType, *payload);
    if (status != noErr)
        qCWarning(mwcoreLog, "SetIconFamilyData() returned error %d", static_cast<int16_t>(status));
    return status == noErr;
}

bool IconFamily::writeToFile(const QString &path, OSStatus *status) const {
    const auto bytes = fileSystemRepresentation(path);
    OSStatus result = bdNamErr;
    const auto place = bytes ? ItemLocator::find(*bytes, &result) : std::nullopt;
    auto file = place ? AtomicFile::begin(*place, &result) : std::nullopt;
    if (file)
        result = file->replace(hIconFamily_, accessOfNewFile());
    if (status)
        *status = result;
    return result == noErr;
}

QImage IconFamily::resampleImage(const QImage &image, int32_t toIconWidth,
                                 NSImageInterpolation usingImageInterpolation) {
    if (image.isNull() || toIconWidth <= 0)
        return {};
    const int width = image.width();
    const int height = image.height();
    // floor(a * b / c + 0.5) in whole numbers
    const auto scaled = [toIconWidth](int shorter, int longer) {
        return static_cast<int>((2 * int64_t(toIconWidth) * shorter + longer) /
                                (2 * int64_t(longer)));
    };
    const QSize drawn = width >= height ? QSize(toIconWidth, scaled(height, width))
                                        : QSize(scaled(width, height), toIconWidth);
    const QPointF corner((toIconWidth - drawn.width()) / 2.0, (toIconWidth - drawn.height()) / 2.0);
    return drawnImage(image, {toIconWidth, toIconWidth}, {corner, drawn}, usingImageInterpolation)
        .convertToFormat(QImage::Format_RGBA8888_Premultiplied);
}

} // namespace MWCore
