// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "BitmapImageRep.h"
#include "IconImage.h"

#include <MWCore/IconFamilyData.h>
#include <MWCore/ImageInterpolation.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <cstdint>
#include <optional>
#include <utility>

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QImage>
#include <QSharedData>
#include <QString>

namespace MWCore {

class ResourceFile;

/// An icon family in the icns format: icons of several sizes and depths. Reference-counted; belongs
/// to one thread at a time, except for the pasteboard operations, which belong to the main thread.
class MWCORE_EXPORT IconFamily : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<IconFamily>;

    // init... and iconFamily... are the same. Each returns null on failure. Paths are texts made by
    // stringWithFileSystemRepresentation().

    /// An empty family, without any bytes.
    [[nodiscard]] static Ptr init();
    [[nodiscard]] static Ptr iconFamily() { return init(); }

    /// A family of the bytes @p data, which are not examined.
    [[nodiscard]] static Ptr initWithData(const QByteArray &data);

    /// The family in an .icns file. Null if the file cannot be read, is longer than 64 MB or does
    /// not begin with an icns header.
    [[nodiscard]] static Ptr initWithContentsOfFile(const QString &path);
    [[nodiscard]] static Ptr iconFamilyWithContentsOfFile(const QString &path) {
        return initWithContentsOfFile(path);
    }

    /// Takes the bytes of a family, which are not examined.
    [[nodiscard]] static Ptr initWithIconFamilyHandle(IconFamilyHandle handle);
    [[nodiscard]] static Ptr iconFamilyWithIconFamilyHandle(IconFamilyHandle handle) {
        return initWithIconFamilyHandle(std::move(handle));
    }

    /// The icon that the desktop shows for the item: its custom icon, else one for its kind.
    [[nodiscard]] static Ptr initWithIconOfFile(const QString &path);
    [[nodiscard]] static Ptr iconFamilyWithIconOfFile(const QString &path) {
        return initWithIconOfFile(path);
    }

    /// The desktop's icon for the four-character code @p fourByteCode (IconServices.h).
    [[nodiscard]] static Ptr initWithSystemIcon(uint32_t fourByteCode);
    [[nodiscard]] static Ptr iconFamilyWithSystemIcon(uint32_t fourByteCode) {
        return initWithSystemIcon(fourByteCode);
    }

    /// A family of twelve elements made from @p image, which is fitted into squares of 512, 256,
    /// 128, 32 and 16 pixels: in this order 'ic09', 'ic08', 'it32', 't8mk', 'il32', 'icl8', 'l8mk',
    /// 'ICN#', 'is32', 'ics8', 's8mk', 'ics#'. IconFamilyBuilder makes all sizes that are in use
    /// today.
    [[nodiscard]] static Ptr initWithThumbnailsOfImage(
        const QImage &image,
        NSImageInterpolation usingImageInterpolation = NSImageInterpolationHigh);
    [[nodiscard]] static Ptr iconFamilyWithThumbnailsOfImage(
        const QImage &image,
        NSImageInterpolation usingImageInterpolation = NSImageInterpolationHigh) {
        return initWithThumbnailsOfImage(image, usingImageInterpolation);
    }

    /// The pixels of 'ic09', 'ic08', 'it32', 'ih32', 'il32' or 'is32' with the alpha of its mask;
    /// opaque without a mask. Alpha comes first and the colours are as stored, not premultiplied,
    /// although the bitmap's format does not say so. nullopt for another type, and if the element
    /// is missing or damaged.
    [[nodiscard]] std::optional<BitmapImageRep>
    bitmapImageRepWithAlphaForIconFamilyElement(uint32_t elementType) const;

    /// Every element that can be decoded, in the family's order; of several of one type the first.
    [[nodiscard]] IconImage imageWithAllReps() const;

    /// The element with the alpha of its mask, QImage::Format_RGBA8888, not premultiplied. Null if
    /// it is missing, damaged or not an image.
    [[nodiscard]] QImage imageOfElement(uint32_t elementType) const;

    /// The family's bytes.
    [[nodiscard]] QByteArray data() const { return hIconFamily_; }

    /// The family that is nested in the element @p elementType, for example kDarkFamilyType; null
    /// if there is none.
    [[nodiscard]] Ptr nestedFamily(uint32_t elementType) const;

    /// Nests @p family in the element @p elementType; no bytes remove it.
    [[nodiscard]] bool setNestedFamily(uint32_t elementType, const IconFamily &family);

    /// Writes the family's bytes to the file, replacing it atomically. False, with the cause in
    /// @p status unless that is null, also if there is a link, a folder or a device.
    [[nodiscard]] bool writeToFile(const QString &path, OSStatus *status = nullptr) const;

    /// Sets one of the twelve elements of initWithThumbnailsOfImage() from a bitmap of exactly its
    /// size. False for another element, and, with a line in the log, if the bitmap's layout is not
    /// supported or the family is damaged.
    [[nodiscard]] bool setIconFamilyElement(uint32_t elementType,
                                            const BitmapImageRep &fromBitmapImageRep);

    // Custom icons. A failure leaves the item as it was up to the step that failed; at any moment
    // the old or the new icon is whole. @p withCompatibility also stores the 1-bit and 8-bit
    // elements as resources of their own. The item's metadata is changed as by MetadataStore.h.
    // Each stores the cause of a failure in @p status, unless that is null.

    /// Sets the family as the custom icon of a file: resource 'icns' -16455 of its fork, and the
    /// flag kHasCustomIcon. Creates the file if nothing is there. Preserves its modification date.
    [[nodiscard]] bool setAsCustomIconForFile(const QString &path, bool withCompatibility = false,
                                              OSStatus *status = nullptr) const;

    /// False also if the file has no resource fork (resFNotFound). The compatibility resources
    /// remain.
    [[nodiscard]] static bool removeCustomIconFromFile(const QString &path,
                                                       OSStatus *status = nullptr);

    /// Sets the family as the custom icon of a folder: in the fork of a new invisible file "Icon\r"
    /// in it, which replaces any other, and the flag kHasCustomIcon of the folder. Its modification
    /// date changes.
    [[nodiscard]] bool setAsCustomIconForDirectory(const QString &path,
                                                   bool withCompatibility = false,
                                                   OSStatus *status = nullptr) const;

    /// Clears the folder's flag, then deletes its file "Icon\r"; false if there is none (fnfErr).
    [[nodiscard]] static bool removeCustomIconFromDirectory(const QString &path,
                                                            OSStatus *status = nullptr);

    // The general pasteboard. They need a QGuiApplication and its thread; without one, there is no
    // family on the pasteboard.

    /// Whether the pasteboard offers a family.
    [[nodiscard]] static bool canInitWithScrap();
    [[nodiscard]] static Ptr initWithScrap();
    [[nodiscard]] static Ptr iconFamilyWithScrap() { return initWithScrap(); }

    /// Offers the family's bytes as "com.apple.icns", "'icns' (CorePasteboardFlavorType
    /// 0x69636E73)" and "image/x-icns". Always true.
    bool putOnScrap() const;

    // Encoders of element data. The packers return the bytes of the element for a bitmap of
    // @p requiredPixelSize x @p requiredPixelSize pixels; nullopt if it has another size or, with a
    // line in the log, if its layout is not supported. They take the samples as red, green, blue,
    // alpha, whatever the bitmap's format says.

    /// @p image fitted into a transparent square of @p toIconWidth pixels, centred, aspect ratio
    /// kept. A margin of an odd number of pixels is split between two pixels. Premultiplied; null
    /// if @p image is null.
    [[nodiscard]] static QImage resampleImage(const QImage &image, int32_t toIconWidth,
                                              NSImageInterpolation usingImageInterpolation);

    /// Alpha, red, green, blue; the colours are divided by alpha and truncated.
    [[nodiscard]] static std::optional<QByteArray>
    get32BitDataFromBitmapImageRep(const BitmapImageRep &bitmap, int32_t requiredPixelSize);

    /// Indexes of the nearest colours of the 256-colour palette; alpha is ignored.
    [[nodiscard]] static std::optional<QByteArray>
    get8BitDataFromBitmapImageRep(const BitmapImageRep &bitmap, int32_t requiredPixelSize);

    /// The alpha samples; 255 without alpha, the gray sample of a gray bitmap.
    [[nodiscard]] static std::optional<QByteArray>
    get8BitMaskFromBitmapImageRep(const BitmapImageRep &bitmap, int32_t requiredPixelSize);

    /// The mask, twice: one bit per pixel, the leftmost in the highest bit. For 32 bits per pixel
    /// it is set if the least significant byte of the pixel's word in native order is not zero: on
    /// a little-endian processor the red sample.
    [[nodiscard]] static std::optional<QByteArray>
    get1BitMaskFromBitmapImageRep(const BitmapImageRep &bitmap, int32_t requiredPixelSize);

    /// Adds the data of an element to the open resource file @p file, as a resource of the same
    /// type without a name. False if the family has no such element.
    [[nodiscard]] bool addResourceType(uint32_t type, int16_t asResID, ResourceFile &file) const;

private:
    explicit IconFamily(IconFamilyHandle handle) : hIconFamily_(std::move(handle)) {}

    [[nodiscard]] OSStatus addCustomIcon(ResourceFile &file, bool withCompatibility) const;
    [[nodiscard]] OSStatus setForFile(const QString &path, bool withCompatibility) const;
    [[nodiscard]] OSStatus setForFolder(const QString &path, bool withCompatibility) const;

    IconFamilyHandle hIconFamily_; ///< as in an .icns file or a resource 'icns'
};

} // namespace MWCore
