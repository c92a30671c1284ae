// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <cstdint>
#include <optional>
#include <span>

#include <QSize>

/// The elements of an icon family, by type. Source: the published icns format.
namespace MWCore {

/// The number of a four-character code: fourCharCode("icns").
[[nodiscard]] constexpr uint32_t fourCharCode(const char (&code)[5]) {
    uint32_t number = 0;
    for (int index = 0; index < 4; ++index)
        number = number << 8 | static_cast<unsigned char>(code[index]);
    return number;
}

enum class IconEncoding : uint8_t {
    Rgb,       ///< three compressed channels; alpha is in the mask element
    PaddedRgb, ///< the same after four zero bytes
    Mask,      ///< a byte of opacity per pixel
    Bitmap,    ///< 1-bit icon, then 1-bit mask
    Plain,     ///< 1-bit icon without a mask
    Indexed4,  ///< two pixels a byte, high one first
    Indexed8,  ///< indexes of the 256-colour palette
    Argb,      ///< "ARGB", then four compressed channels
    File,      ///< a PNG or JPEG 2000 file
    Family,    ///< a nested icon family without its 8-byte header
    Other,     ///< not an image
};

/// How the payload of an element is stored.
enum class IconStorage : uint8_t {
    Compressed,   ///< RGB or ARGB channels as runs
    Uncompressed, ///< RGB or ARGB pixels as they are, which not every program reads
    Plain,        ///< mask, 1-bit or indexed pixels
    Png,
    Jpeg2000,
    Family,  ///< a nested icon family
    Unknown, ///< not an image, or damaged
};

struct IconElementType {
    uint32_t type;
    QSize size; ///< pixels; empty if it is not an image
    IconEncoding encoding;
    uint32_t mask = 0; ///< the type of the element with the alpha of RGB pixels; else 0
    int scale = 1;     ///< pixels per point
};

/// In the order of the types' sizes and ages; every type occurs once.
[[nodiscard]] MWCORE_EXPORT std::span<const IconElementType> iconElementTypes();

/// Null if the type is unknown.
[[nodiscard]] MWCORE_EXPORT const IconElementType *iconElementType(uint32_t type);

/// The length in bytes of the payload of a mask or of 1-bit or indexed pixels; nullopt if elements
/// of @p type have no fixed length.
[[nodiscard]] MWCORE_EXPORT std::optional<qsizetype> fixedLength(const IconElementType &type);

inline constexpr uint32_t kIconFamilyType = fourCharCode("icns");
inline constexpr uint32_t kTableOfContentsType = fourCharCode("TOC ");
inline constexpr uint32_t kDarkFamilyType = 0xFDD92FA8;

} // namespace MWCore
