// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcore_export.h"

#include <optional>

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

/// Paths and names are bytes to the system and QString to people. The two functions below are the
/// only way between them: UTF-8 in which every invalid byte 0xNN is carried as the lone surrogate
/// U+DCNN, so that every name survives the round trip and can be opened. Any thread.
namespace MWCore {

/// The text of a name or path as the system gave it. Null for null.
[[nodiscard]] MWCORE_EXPORT QString
stringWithFileSystemRepresentation(QByteArrayView representation);

/// The bytes to hand to the system. Nothing for a text that no name can have: one that contains
/// U+0000, or half of a surrogate pair that carries no byte.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray> fileSystemRepresentation(const QString &text);

/// The bytes of any text as C has them: up to its first U+0000, and what carries no byte as UTF-8
/// can best say it.
[[nodiscard]] MWCORE_EXPORT QByteArray cString(const QString &text);

} // namespace MWCore
