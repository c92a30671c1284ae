// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/formats/AppleDouble.h"
#include "platform/foundation/OSStatus.h"

#include <optional>

#include <QByteArray>

/// The file "._name" beside an item that keeps what the file system cannot (RFC 1740). A file of
/// that name that is nothing of the kind is left alone. Any thread.
namespace MWCore {

/// In bytes; a fork is never meant to be so large.
constexpr int64_t kLargestSidecar = 256 << 20;

inline constexpr QByteArrayView kSidecarPrefix = "._";
[[nodiscard]] inline bool isSidecarName(QByteArrayView name) {
    return name.startsWith(kSidecarPrefix);
}

/// The name of the sidecar of an item @p name; empty for an item that can have none: a sidecar
/// itself, and "/".
[[nodiscard]] QByteArray sidecarName(const QByteArray &name);

/// An entry of an item's sidecar, found but not read.
struct OpenSidecarEntry {
    Descriptor file;
    AppleDouble::Entry entry;
    int64_t allocated; ///< space that the whole sidecar takes on the disk, bytes
    QByteArray head;   ///< the beginning of the file

    /// Up to @p length bytes of the file from @p offset on. Nothing on failure, with the cause in
    /// @p status.
    [[nodiscard]] std::optional<QByteArray> read(int64_t offset, int64_t length,
                                                 OSStatus *status) const;
};

/// Nothing where there is none, with noErr in @p status, or on failure: mapReadErr when the sidecar
/// is damaged.
[[nodiscard]] std::optional<OpenSidecarEntry> openSidecarEntry(const QByteArray &path,
                                                               AppleDoubleId id, OSStatus *status);

/// The same, read without the rest; fileBoundsErr when more than 256 MB would have to be read.
struct SidecarEntry {
    uint32_t length;      ///< of the whole content, bytes
    int64_t allocated;    ///< as above
    QByteArray beginning; ///< at most as many bytes as asked for
};
[[nodiscard]] std::optional<SidecarEntry> sidecarEntry(const QByteArray &path, AppleDoubleId id,
                                                       int64_t limit, OSStatus *status);

} // namespace MWCore
