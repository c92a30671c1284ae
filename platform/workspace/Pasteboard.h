// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <optional>
#include <utility>
#include <vector>

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The general pasteboard: the desktop's clipboard. Needs a QGuiApplication and its thread; without
/// one the pasteboard is empty and what is put on it is lost.
namespace MWCore::Pasteboard {

/// The types that are offered.
[[nodiscard]] MWCORE_EXPORT QStringList types();

/// The data of one type; nullopt if it is not offered or its owner does not deliver it.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray> data(const QString &type);

/// Replaces what is on the pasteboard by @p contents, pairs of a type and its data.
MWCORE_EXPORT void set(const std::vector<std::pair<QString, QByteArray>> &contents);

} // namespace MWCore::Pasteboard
