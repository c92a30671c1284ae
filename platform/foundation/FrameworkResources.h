// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcore_export.h"

#include <optional>

#include <QByteArray>
#include <QString>

/// The files that are compiled into the libraries (images, interface files, tables), by name and
/// type: the image "l1" of type "png" is l1.png. An empty type means a file without an extension. A
/// name is never a path. Any thread.
namespace MWCore::FrameworkResources {

/// The Qt resource path of the file, which QFile and the rest of Qt can open. Empty if there is no
/// such file.
[[nodiscard]] MWCORE_EXPORT QString path(const QString &name, const QString &type);

/// The contents of the file; nullopt if there is no such file.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray> data(const QString &name,
                                                           const QString &type);

} // namespace MWCore::FrameworkResources
