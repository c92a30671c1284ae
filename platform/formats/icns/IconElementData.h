// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/icns/IconElements.h"

#include <QByteArray>
#include <QImage>

namespace MWCore {

/// The data of an element of @p type for @p image, as SetIconFamilyData() takes it. The image must
/// have the element's size and QImage::Format_RGBA8888. A 1-bit icon is the shape of what is at
/// least half opaque, twice: as the icon and as its mask. Only for 1-bit icons with a mask, 8-bit
/// indexes, masks and 32-bit pixels. Any thread.
[[nodiscard]] QByteArray elementData(const QImage &image, const IconElementType &type);

} // namespace MWCore
