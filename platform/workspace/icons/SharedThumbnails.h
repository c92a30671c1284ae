// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/Picture.h>

#include <optional>

#include <QByteArray>

namespace MWCore {

/// The thumbnail of the file at @p path that programs share (XDG thumbnail standard, 0.9), in the
/// smallest size of at least @p pixels, or else the largest. nullopt if none was made since the
/// file was last modified. Any thread.
[[nodiscard]] std::optional<Picture> sharedThumbnail(const QByteArray &path, int pixels);

} // namespace MWCore
