// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>
#include <QString>

namespace MWCore {

/// The name of the MIME type of the regular file at @p path, by the file's name and, if that is
/// ambiguous, by its first 16 KB. Any thread.
[[nodiscard]] QString mimeTypeOfFile(const QByteArray &path);

} // namespace MWCore
