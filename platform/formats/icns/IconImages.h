// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/icns/IconContainer.h"

#include <QImage>

namespace MWCore {

/// The image of an element of @p family with the alpha of its mask: QImage::Format_RGBA8888, not
/// premultiplied. Opaque if a mask is missing or too short. Null if the element is damaged or not
/// an image. Any thread.
[[nodiscard]] QImage elementImage(const IconContainer &family,
                                  const IconContainer::Element &element);

} // namespace MWCore
