// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/icns/IconContainer.h"

#include <QImage>

namespace MWCore {

/// The image of an element of @p family with the alpha of its mask: QImage::Format_RGBA8888, not
/// premultiplied. The mask is the 8-bit one for RGB and the 1-bit one for 1-bit and indexed pixels;
/// if it is missing or too short, the other one; opaque without any. Null if the element is damaged
/// or not an image. Any thread.
[[nodiscard]] QImage elementImage(const IconContainer &family,
                                  const IconContainer::Element &element);

} // namespace MWCore
