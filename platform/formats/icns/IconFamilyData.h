// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "IconElements.h"

#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>
#include <MWCore/PngEncoding.h>

#include <cstdint>
#include <optional>

#include <QByteArray>
#include <QByteArrayView>

/// Elements of an icon family, in the form in which programs use them. Compressed forms are made
/// and resolved here. Any thread.
namespace MWCore {

/// The bytes of an icon family as a file or a resource holds them; no bytes are an empty family.
using IconFamilyHandle = QByteArray;

/// Sets the element @p type, in place of the first one of that type or at the end. @p data is:
/// - for a 32-bit element (RGB, ARGB, PNG), width x height x 4 bytes in row-major order: alpha,
///   red, green, blue, not premultiplied; it is compressed. The alpha of an RGB element is dropped.
///   A PNG or JPEG 2000 file of the right size is stored as it is in an element that may hold one;
/// - for an indexed, 1-bit or mask element, exactly its payload;
/// - for any other type, the payload, which is not examined.
/// paramErr if the data has another length or size; mapReadErr if the family is damaged;
/// fileBoundsErr if it would become too long. On failure the family does not change.
/// @p pngEffort is that of encodePng().
[[nodiscard]] MWCORE_EXPORT OSStatus SetIconFamilyData(IconFamilyHandle &iconFamily, uint32_t type,
                                                       QByteArrayView data,
                                                       int pngEffort = kDefaultPngEffort);

/// The data of the first element of @p type, in the same form; an RGB element has alpha 0. nullopt
/// on failure, with the cause in @p status: resNotFound if there is none, mapReadErr if it is
/// damaged.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray>
GetIconFamilyData(const IconFamilyHandle &iconFamily, uint32_t type, OSStatus *status);

/// Removes all elements of @p type; resNotFound if there is none.
[[nodiscard]] MWCORE_EXPORT OSStatus RemoveIconFamilyData(IconFamilyHandle &iconFamily,
                                                          uint32_t type);

} // namespace MWCore
