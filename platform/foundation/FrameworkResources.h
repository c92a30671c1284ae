// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcore_export.h"

#include <optional>

#include <QByteArray>
#include <QString>

/// The files that are compiled into the libraries (images, interface files, tables), by name and
/// type: the image "l1" of type "png" is l1.png. An empty type means a file without an extension.
/// Names are single names, never paths. Any thread.
namespace MWCore::FrameworkResources {

/// Where QFile and everything else in Qt that opens files finds it. Empty where there is none.
[[nodiscard]] MWCORE_EXPORT QString path(const QString &name, const QString &type);

/// Its contents. Nothing where there is none.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray> data(const QString &name,
                                                           const QString &type);

} // namespace MWCore::FrameworkResources
