// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/themes/IconThemeIndex.h"
#include "platform/workspace/themes/ItemStamps.h"

#include <optional>
#include <vector>

#include <QByteArray>

/// Which icon themes there are. Any thread.
namespace MWCore {

/// The index of the theme @p name in the first of @p baseFolders that has one; nullopt if none has
/// one that can be read. Adds the items that decide this to @p stamps, which may be null.
[[nodiscard]] std::optional<IconThemeIndex>
installedThemeIndex(const QByteArray &name, const std::vector<QByteArray> &baseFolders,
                    ItemStamps *stamps = nullptr);

/// The first of these that is in one of @p baseFolders: @p name, what the settings name, a usual
/// theme; see IconTheme::setCurrentName(). Adds the items that decide this to @p stamps.
[[nodiscard]] QByteArray chosenThemeName(const QByteArray &name,
                                         const std::vector<QByteArray> &baseFolders,
                                         ItemStamps &stamps);

/// The folders with the settings that name a theme.
[[nodiscard]] std::vector<QByteArray> themeSettingsFolders();

} // namespace MWCore
