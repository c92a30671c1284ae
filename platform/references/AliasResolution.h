// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/AliasRecord.h"
#include "platform/references/FSRef.h"
#include "platform/references/InodeSearch.h"

#include <optional>

#include <QByteArray>

namespace MWCore {

/// @p path without any links; empty, with the cause in `errno`, where that cannot be told.
[[nodiscard]] QByteArray withoutLinks(const QByteArray &path);

/// What another item at the stored path means.
enum class Replacement {
    IsTheItem, ///< programs save by putting a new file in the old one's place
    IsAnother,
};

/// What is written down of the item at @p path, an absolute path, so that it can be found again.
/// Nothing on failure, with the cause in @p status.
[[nodiscard]] std::optional<AliasRecord> aliasRecordOf(const QByteArray &path, OSStatus *status);

/// The same of a reference whose item need no longer be where it was.
[[nodiscard]] AliasRecord recordOf(const FSRef &ref);

/// Where the item of @p record is now. Tried in this order: the stored path; the same place where
/// its file system is mounted now; the file handle, where the kernel permits it; the folders of the
/// stored path, followed through renames, and the names in the last of them; the stored path
/// whatever is there, as @p replacement says; everything below the home folder or the mount point.
/// Nothing on failure, with the cause in @p status: permErr when the folder that it was in may not
/// be entered.
[[nodiscard]] std::optional<QByteArray> locate(const AliasRecord &record, Replacement replacement,
                                               const SearchLimits &limits, OSStatus *status);

/// As FSRefMakePath(), for a path of any length.
[[nodiscard]] OSStatus currentPath(const FSRef &ref, QByteArray *path);

} // namespace MWCore
