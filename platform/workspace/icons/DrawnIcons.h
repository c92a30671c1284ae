// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconServices.h"

#include <optional>

#include <QByteArray>
#include <QString>

/// The icons that this library draws itself if no theme has them: SVG resources with the names of
/// the XDG Icon Naming Specification. Small icons have drawings of their own, which end at whole
/// pixels: "folder-16", "folder-24". Any thread.
namespace MWCore {

/// The name of the drawing for the icon at @p points: that of the first of its theme names that is
/// drawn, else its `drawing`.
[[nodiscard]] QString drawingFor(const IconRef &icon, int points);

/// nullopt if there is none of this name.
[[nodiscard]] std::optional<QByteArray> drawingData(const QString &name);

} // namespace MWCore
