// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconFamilyData.h"

#include "platform/formats/icns/IconContainer.h"
#include "platform/formats/icns/IconPixels.h"

#include <utility>

#include <QImage>

namespace MWCore {
namespace {

/// The payload for 32-bit pixels, or for a file that is stored as it is. nullopt on failure, with
/// the cause in @p status.
std::optional<QByteArray> payloadForPixels(const IconElementType &type, QByteArrayView data,
                                           int pngEffort, OSStatus *status) {
    *status = noErr;
    if (isFileOfSize(type, data))
        return data.toByteArray();
    if (data.size() != pixelBytes(type)) {
        *status = paramErr;
        return std::nullopt;
    }
    QByteArray payload = encodePixels(type, data, pngEffort);
    *status = payload.isEmpty() ? memFullErr : noErr;
    return payload.isEmpty() ? std::nullopt : std::optional(std::move(payload));
}

/// The same for an element of any type; null if the type is unknown.
std::optional<QByteArray> payloadFor(const IconElementType *type, QByteArrayView data,
                                     int pngEffort, OSStatus *status) {
    if (type && hasPixels(*type))
        return payloadForPixels(*type, data, pngEffort, status);
    const auto length = type ? fixedLength(*type) : std::nullopt;
    const bool hasLength = data.size() == length.value_or(data.size());
    *status = hasLength ? noErr : paramErr;
    return hasLength ? std::optional(data.toByteArray()) : std::nullopt;
}

OSStatus statusOfDamage(const IconFamilyHandle &iconFamily) {
    const bool isDamaged = IconContainer(iconFamily).damage() != IconContainer::Damage::None;
    return isDamaged ? mapReadErr : fileBoundsErr;
}

} // namespace

OSStatus SetIconFamilyData(IconFamilyHandle &iconFamily, uint32_t type, QByteArrayView data,
                           int pngEffort) {
    OSStatus status = noErr;
    const auto payload = payloadFor(iconElementType(type), data, pngEffort, &status);
    if (!payload)
        return status;
    auto changed = familyWithElement(iconFamily, type, *payload);
    if (!changed)
        return statusOfDamage(iconFamily);
    iconFamily = std::move(*changed);
    return noErr;
}

std::optional<QByteArray> GetIconFamilyData(const IconFamilyHandle &iconFamily, uint32_t type,
                                            OSStatus *status) {
    const IconContainer family(iconFamily);
    const IconContainer::Element *const element = family.findOnce(type);
    *status = element ? noErr : resNotFound;
    if (!element)
        return std::nullopt;
    const QByteArrayView payload = family.payload(*element);
    const IconElementType *const known = iconElementType(type);
    if (known && hasPixels(*known)) {
        const QImage image = decodePixels(*known, payload).image;
        *status = image.isNull() ? mapReadErr : noErr;
        return image.isNull() ? std::nullopt : std::optional(argbOf(image));
    }
    const auto length = known ? fixedLength(*known) : std::nullopt;
    if (length && payload.size() < *length) {
        *status = mapReadErr;
        return std::nullopt;
    }
    return payload.first(length.value_or(payload.size())).toByteArray();
}

OSStatus RemoveIconFamilyData(IconFamilyHandle &iconFamily, uint32_t type) {
    auto changed = familyWithoutElement(iconFamily, type);
    if (!changed)
        return IconContainer(iconFamily).findOnce(type) ? statusOfDamage(iconFamily) : resNotFound;
    iconFamily = std::move(*changed);
    return noErr;
}

} // namespace MWCore
