// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcore_export.h"

#include <optional>

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

/// Conversion between paths and names as bytes, which the system uses, and as QString. The bytes
/// are decoded as UTF-8, and every invalid byte 0xNN becomes the lone surrogate U+DCNN, so that
/// every name survives the round trip and can be opened. Nothing else converts paths or names. Any
/// thread.
namespace MWCore {

/// The text of a name or path that came from the system. Null if @p representation is null.
[[nodiscard]] MWCORE_EXPORT QString
stringWithFileSystemRepresentation(QByteArrayView representation);

/// The bytes to pass to the system. nullopt if @p text cannot be a name or path: it contains
/// U+0000, or an unpaired surrogate that carries no byte.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray> fileSystemRepresentation(const QString &text);

/// Any text as the bytes of a C string, up to its first U+0000. A text without a file-system
/// representation is converted by QString::toUtf8().
[[nodiscard]] MWCORE_EXPORT QByteArray cString(const QString &text);

} // namespace MWCore
