// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>
#include <QMimeType>

namespace MWCore {

/// The MIME type of the regular file at @p path, by its name and, if that is ambiguous, by its
/// first 16 KB. Any thread.
[[nodiscard]] QMimeType mimeTypeOfFile(const QByteArray &path);

} // namespace MWCore
