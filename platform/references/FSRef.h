// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FileIdentity.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <cstdint>

#include <QByteArray>

namespace MWCore {

/// A reference to an existing item: its path and identity. A plain value that keeps nothing open. A
/// reference to a link is not followed.
struct FSRef {
    QByteArray path; ///< absolute, in file-system representation
    FileIdentity identity;

    /// Whether the path contains a link that another user could have made. Such an item can be
    /// examined, but changing it is refused (foreignLinkErr), even after it has moved.
    bool isBehindForeignLink = false;

    friend bool operator==(const FSRef &, const FSRef &) = default;
};

/// The longest path that FSRefMakePath() returns, in bytes.
constexpr qsizetype kLongestReferencePath = 1024;

/// How many names a search for an item that has moved reads before it gives up.
constexpr int64_t kMostSearchedNames = 4'000'000;

/// Makes @p ref refer to the item at @p path; a relative path starts in the current folder. fnfErr
/// if nothing is there, bdNamErr if the path is empty.
[[nodiscard]] MWCORE_EXPORT OSStatus FSPathMakeRef(const QByteArray &path, FSRef *ref);

/// The current path of the item. An item that was renamed or moved is found as by an alias. A new
/// item at the same path does not count as the item, except on FUSE, where inode numbers can
/// change. fnfErr if the item is gone, fileBoundsErr if its path is too long.
[[nodiscard]] MWCORE_EXPORT OSStatus FSRefMakePath(const FSRef &ref, QByteArray *path);

} // namespace MWCore
