// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/icns/IconElements.h"

#include <cstdint>

#include <QByteArray>
#include <QImage>

namespace MWCore {

// clang-format off
/// The elements that programs of today look for, by size. 'ic09' comes after 'ic08', because some
/// programs show the last of the two.
inline constexpr uint32_t kModernElements[] = {
    fourCharCode("ic04"), fourCharCode("ic11"), fourCharCode("ic05"), fourCharCode("ic12"),
    fourCharCode("ic07"), fourCharCode("ic13"), fourCharCode("ic08"), fourCharCode("ic14"),
    fourCharCode("ic09"), fourCharCode("ic10"),
};
// clang-format on

/// The data of an element of @p type for @p image, as SetIconFamilyData() takes it. The image must
/// have the element's size and QImage::Format_RGBA8888. A 1-bit icon is the shape of what is at
/// least half opaque, twice: as the icon and as its mask. Only for 1-bit icons with a mask, 8-bit
/// indexes, masks and 32-bit pixels. Any thread.
[[nodiscard]] QByteArray elementData(const QImage &image, const IconElementType &type);

} // namespace MWCore
