// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconServices.h"

#include <optional>

#include <QByteArray>
#include <QString>

/// Icons that are named in the format of desktop entries. Any thread.
namespace MWCore {

/// The value of Icon= in the file at @p path, relative to the open folder @p folder (or AT_FDCWD),
/// in the user's language; nullopt if it names none or cannot be read. Of a long file only the
/// first 64 KB are read, and a link is not followed.
[[nodiscard]] std::optional<QString> iconNameIn(int folder, const QByteArray &path);

/// Adds the icon with a name of that kind, an icon of the theme or an absolute path, to @p icon.
/// @p item is on a file system that may be touched.
void addNamedIcon(const QString &name, const QByteArray &item, IconRef &icon);

} // namespace MWCore
