// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/themes/IconThemeIndex.h"

#include <optional>
#include <vector>

#include <QByteArray>

/// Which icon themes there are. Any thread.
namespace MWCore {

/// The index of the theme @p name in the first of @p baseFolders that has one; nullopt if none has
/// one that can be read.
[[nodiscard]] std::optional<IconThemeIndex>
installedThemeIndex(const QByteArray &name, const std::vector<QByteArray> &baseFolders);

/// The name of the theme that the user has chosen, or else of a usual one, if it is in one of
/// @p baseFolders: IconTheme::setCurrentName().
[[nodiscard]] QByteArray usualThemeName(const std::vector<QByteArray> &baseFolders);

} // namespace MWCore
