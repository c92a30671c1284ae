// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <optional>

#include <QByteArray>

/// URLs of local items (RFC 8089). They keep every byte of a path, whatever its encoding. Any
/// thread.
namespace MWCore {

/// "file:///..." for an absolute path; every byte but unreserved characters and "/" is written as
/// %NN.
[[nodiscard]] MWCORE_EXPORT QByteArray fileUrl(const QByteArray &path);

/// The path in a "file:" URL. nullopt for another scheme, another host, or a path that no item can
/// have.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray> pathOfFileUrl(const QByteArray &url);

} // namespace MWCore
