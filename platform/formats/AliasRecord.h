// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/FileIdentity.h"
#include "platform/foundation/mwcore_export.h"

#include <optional>
#include <vector>

#include <QByteArray>

namespace MWCore {

/// The stored description by which an item can be found again. Its bytes are opaque to callers; the
/// format is this library's own (docs/metadata.md).
struct MWCORE_EXPORT AliasRecord {
    QByteArray path;     ///< absolute, as given when the alias was made
    QByteArray realPath; ///< the same with the links in its folders resolved
    FileIdentity identity;
    uint64_t fileSystem = 0;       ///< f_fsid of statfs(2)
    QByteArray fileSystemType;     ///< as in the mount table; empty in older records
    QByteArray source;             ///< of the mount, as in the mount table; empty in older records
    uint32_t mountPointLength = 0; ///< how many bytes of realPath are the mount point
    std::vector<uint64_t> ancestors; ///< inode numbers of the folders of realPath, "/" first

    [[nodiscard]] QByteArray toBytes() const;

    /// The maximum length of a record in bytes: two paths, an inode number per level and the names
    /// of a file system, with no path longer than the system's limit.
    static constexpr qsizetype kLongest = 32768;

    /// nullopt unless @p bytes are one complete record of a known version.
    [[nodiscard]] static std::optional<AliasRecord> parse(QByteArrayView bytes);
};

} // namespace MWCore
