// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/ItemIcon.h"

#include <QImage>

namespace MWCore {

/// Draws @p badge over @p image, a square of QImage::Format_ARGB32_Premultiplied: source over the
/// image, in the same square. Leaves the image alone if the badge's resource is missing. Any
/// thread.
void drawBadge(QImage &image, IconBadge badge);

} // namespace MWCore
