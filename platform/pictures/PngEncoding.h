// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <QByteArray>
#include <QImage>

namespace MWCore {

inline constexpr int kDefaultPngEffort = 5;

/// Encodes @p image as PNG (ISO/IEC 15948), 8-bit RGBA, without its texts, colour space and
/// resolution. @p effort is how hard the encoder tries: 0 stores, 9 compresses best. Empty if the
/// image is null, memory runs out or the pixels compress to 2 GB or more. Any thread.
[[nodiscard]] MWCORE_EXPORT QByteArray encodePng(const QImage &image,
                                                 int effort = kDefaultPngEffort);

} // namespace MWCore
