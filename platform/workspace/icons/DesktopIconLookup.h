// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <functional>
#include <optional>

#include <QByteArray>
#include <QString>

/// Custom icons that a desktop stores in a service of the session, which this library does not
/// talk to. Any thread.
namespace MWCore {

/// At least one of them is set; the file counts if both are.
struct DesktopIcon {
    QByteArray file;   ///< the path of a picture
    QString themeName; ///< an icon of the user's theme
};

/// The custom icon of the item at a path (file-system representation); nullopt if it has none. Is
/// called on any thread, by several at once.
using DesktopIconLookup = std::function<std::optional<DesktopIcon>(const QByteArray &path)>;

/// Uses @p lookup for every item from now on; an empty one ends that. A call that has begun on
/// another thread may still be running when this returns.
MWCORE_EXPORT void setDesktopIconLookup(DesktopIconLookup lookup);

/// The answer of the lookup in use; nullopt without one. A file is returned by its path without
/// links, and only if it is a regular file that can be read without waiting.
[[nodiscard]] MWCORE_EXPORT std::optional<DesktopIcon> lookUpDesktopIcon(const QByteArray &path);

} // namespace MWCore
