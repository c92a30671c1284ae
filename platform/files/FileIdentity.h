// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <optional>

#include <QByteArray>

namespace MWCore {

/// What stays the same of an item while its names change. Valid on one volume; device numbers may
/// differ from one start of the system to the next.
struct FileIdentity {
    uint64_t device = 0; ///< as st_dev
    uint64_t inode = 0;

    /// When the item was made, in nanoseconds since 1970-01-01 UTC; nothing where the file system
    /// does not keep it.
    std::optional<int64_t> birthTime;

    /// The kernel's own name of the item (name_to_handle_at(2)); empty where the file system gives
    /// none.
    int32_t handleType = 0;
    QByteArray handle;

    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

} // namespace MWCore
