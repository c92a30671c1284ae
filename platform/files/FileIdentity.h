// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <optional>

#include <QByteArray>

namespace MWCore {

/// The length in bytes of the longest handle that the kernel makes.
constexpr int kLongestHandle = 128;

/// What identifies an item on its volume, whatever its name. The device number may change when the
/// system restarts.
struct FileIdentity {
    uint64_t device = 0; ///< st_dev
    uint64_t inode = 0;

    /// When the item was created, in nanoseconds since 1970-01-01 UTC; nullopt if the file system
    /// does not record it.
    std::optional<int64_t> birthTime;

    /// The kernel's handle of the item (name_to_handle_at(2)); empty if the file system has none.
    int32_t handleType = 0;
    QByteArray handle;

    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

} // namespace MWCore
