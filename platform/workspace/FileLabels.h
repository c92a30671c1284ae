// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <QColor>
#include <QList>
#include <QStringList>

/// The eight labels by label number; the first, number 0, means none. A user can override the name
/// and colour of label N in the host's settings: `MXLabelNameN` is any text, `MXLabelColorN` a
/// colour as "#rrggbb". An empty name or an invalid colour counts as not set. Any thread.
namespace MWCore {

[[nodiscard]] MWCORE_EXPORT QStringList fileLabels();

/// The colour of number 0 is transparent.
[[nodiscard]] MWCORE_EXPORT QList<QColor> fileLabelColors();

} // namespace MWCore
