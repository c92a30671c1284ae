// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArray>

/// Addresses of local items (RFC 8089), byte for byte: no name is lost to an encoding. Any thread.
namespace MWCore {

/// "file:///..." for an absolute path; everything but unreserved characters and "/" is %NN.
[[nodiscard]] QByteArray fileUrl(const QByteArray &path);

/// The path in a "file:" URL. Nothing for another kind of address, one of another host, and a path
/// that no item can have.
[[nodiscard]] std::optional<QByteArray> pathOfFileUrl(const QByteArray &url);

} // namespace MWCore
