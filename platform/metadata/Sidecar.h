// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/FileStatus.h"
#include "platform/formats/AppleDouble.h"

#include <optional>

#include <QByteArray>

/// The file "._name" beside an item that keeps what the file system cannot (RFC 1740). A file of
/// that name that is nothing of the kind is left alone. Any thread.
namespace MWCore {

/// In bytes; a fork is never meant to be so large.
constexpr int64_t kLargestSidecar = 256 << 20;

/// The name of the sidecar of an item @p name; empty for an item that can have none: a sidecar
/// itself, and "/".
[[nodiscard]] QByteArray sidecarName(const QByteArray &name);

/// An entry of an item's sidecar, read without the rest. Nothing where there is none, with noErr in
/// @p status, or on failure: mapReadErr when the sidecar is damaged, fileBoundsErr when more than
/// 256 MB would have to be read.
struct SidecarEntry {
    uint32_t length;      ///< of the whole content, bytes
    int64_t allocated;    ///< space that the whole sidecar takes on the disk, bytes
    QByteArray beginning; ///< at most as many bytes as asked for
};
[[nodiscard]] std::optional<SidecarEntry> sidecarEntry(const QByteArray &path, AppleDoubleId id,
                                                       int64_t limit, OSStatus *status);

} // namespace MWCore
