// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"

#include <optional>

#include <QByteArray>

/// Paths that lead to open descriptors, and the texts of links. Any thread.
namespace MWCore {

/// A path that leads to what @p descriptor is open on, for calls that take no descriptor (proc(5)).
[[nodiscard]] QByteArray pathOfDescriptor(int descriptor);

/// The path of what @p descriptor is open on, as the kernel reports it; empty for what has none.
[[nodiscard]] QByteArray realPathOfDescriptor(int descriptor);

/// How many links on one path are followed, as in the kernel.
constexpr int kMostLinks = 40;

/// The text of the link @p name in @p folder, or of the link that @p folder itself is open on if
/// @p name is "". nullopt if it cannot be read or is not a link, with the cause in @p status, which
/// may be null.
[[nodiscard]] std::optional<QByteArray> linkText(int folder, const char *name,
                                                 OSStatus *status = nullptr);

} // namespace MWCore
