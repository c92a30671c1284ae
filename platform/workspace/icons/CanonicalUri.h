// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>

/// The names under which programs of a desktop share something about a file. Any thread.
namespace MWCore {

/// The "file:" URI of an absolute path without "." and "..", with the characters unescaped that RFC
/// 2396 permits in a path. GLib writes the same.
[[nodiscard]] QByteArray canonicalUri(const QByteArray &path);

/// The MD5 of @p uri in hexadecimal digits.
[[nodiscard]] QByteArray uriDigest(const QByteArray &uri);

} // namespace MWCore
