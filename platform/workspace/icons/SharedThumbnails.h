// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>
#include <QImage>

namespace MWCore {

/// The thumbnail of the file at @p path that programs share (XDG thumbnail standard, 0.9), in a
/// transparent square of @p pixels: the smallest of at least as many, or else the largest. A
/// picture that is smaller itself is not enlarged, except by @p scale. QImage::Format_RGBA8888.
/// Null if no thumbnail was made since the file was last modified. Any thread.
[[nodiscard]] QImage sharedThumbnail(const QByteArray &path, int pixels, int scale);

} // namespace MWCore
