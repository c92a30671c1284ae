// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FileIdentity.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <QByteArray>

namespace MWCore {

/// A reference to an existing item: where it was and what it is. A plain value that holds nothing
/// open; of a link it means the link itself.
struct FSRef {
    QByteArray path; ///< absolute, in file-system representation
    FileIdentity identity;

    /// Whether somebody else may have led the path here by a link. Such an item can be examined;
    /// changing it is refused (foreignLinkErr), wherever it is by now.
    bool isBehindForeignLink = false;

    friend bool operator==(const FSRef &, const FSRef &) = default;
};

/// The longest path that FSRefMakePath() gives, in bytes.
constexpr qsizetype kLongestReferencePath = 1024;

/// Refers to the item at @p path; a relative path begins in the current folder. fnfErr when
/// nothing is there, bdNamErr for an empty path.
[[nodiscard]] MWCORE_EXPORT OSStatus FSPathMakeRef(const QByteArray &path, FSRef *ref);

/// Where the item is now. One that was renamed or moved meanwhile is found again as that of an
/// alias is, but one put in its place is another item (on FUSE, which may forget inode numbers, it
/// counts as the same): fnfErr when the item is gone, fileBoundsErr when its path is too long.
[[nodiscard]] MWCORE_EXPORT OSStatus FSRefMakePath(const FSRef &ref, QByteArray *path);

} // namespace MWCore
