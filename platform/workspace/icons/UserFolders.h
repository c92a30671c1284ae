// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>

namespace MWCore {

/// The names of the icons of a folder with a purpose of its own, separated by blanks: the home
/// folder, or one of those in user-dirs.dirs (xdg-user-dirs). Null for any other. @p path is
/// absolute. Any thread.
[[nodiscard]] const char *userFolderIcon(const QByteArray &path);

} // namespace MWCore
