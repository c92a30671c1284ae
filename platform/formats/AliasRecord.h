// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/FileIdentity.h"
#include "platform/foundation/mwcore_export.h"

#include <optional>
#include <vector>

#include <QByteArray>

namespace MWCore {

/// What is written down of an item so that it can be found again: an opaque byte string to
/// everybody else, a format of this library's own (see docs/metadata.md).
struct MWCORE_EXPORT AliasRecord {
    QByteArray path;     ///< absolute, as the alias was made from it
    QByteArray realPath; ///< the same without links on the way
    FileIdentity identity;
    uint64_t fileSystem = 0;         ///< f_fsid of statfs(2)
    QByteArray fileSystemType;       ///< as in the table of mounts; empty in older records
    QByteArray source;               ///< of the mount, as there; empty in older records
    uint32_t mountPointLength = 0;   ///< how much of realPath is the mount point
    std::vector<uint64_t> ancestors; ///< inode numbers of the folders of realPath, "/" first

    [[nodiscard]] QByteArray toBytes() const;

    /// No record is longer, in bytes: there are two paths, a folder a level and the names of a
    /// file system, and no path is longer than the system's limit.
    static constexpr qsizetype kLongest = 32768;

    /// Nothing when @p bytes are no whole record of a version that is known.
    [[nodiscard]] static std::optional<AliasRecord> parse(QByteArrayView bytes);
};

} // namespace MWCore
