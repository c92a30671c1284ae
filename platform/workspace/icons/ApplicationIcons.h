// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconServices.h"

#include <optional>

#include <QByteArray>

/// Icons that applications bring along or name. A file that is named must be a regular file on a
/// file system that answers, that of an application folder also inside the folder. Any thread.
namespace MWCore {

/// The icon of the application folder @p folder; nullopt if it is none.
[[nodiscard]] std::optional<IconRef> applicationFolderIcon(const QByteArray &folder);

/// The icon that the desktop entry @p path names; nullopt if it names none.
[[nodiscard]] std::optional<IconRef> desktopEntryIcon(const QByteArray &path);

} // namespace MWCore
