// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/MountSnapshot.h"
#include "platform/formats/AliasRecord.h"
#include "platform/references/FSRef.h"
#include "platform/references/SearchBudget.h"

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

/// Which file systems other than local ones a resolution may touch: they can keep it waiting.
enum class Patience {
    ForRecorded, ///< the one that the item was on
    None,        ///< none but that of the alias file itself; paths come without links, which may be
                 ///< long to follow
};

/// What all steps to one target share, over a whole chain of alias files.
struct Effort {
    explicit Effort(SearchLimits limits, MountSnapshot &snapshot,
                    Patience shown = Patience::ForRecorded)
        : budget(limits), mounts(snapshot), patience(shown) {}

    SearchBudget budget;
    MountSnapshot &mounts;
    Patience patience;
    std::optional<int32_t> ownMount; ///< id of the mount that the alias file itself is on
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
/// Where its file system is not mounted nothing is searched. Nothing on failure, with the cause in
/// @p status: permErr when the folder that it was in may not be entered, that of the budget when
/// the search was cut off.
[[nodiscard]] std::optional<FSRef> locate(const AliasRecord &record, Replacement replacement,
                                          Effort &effort, OSStatus *status);

/// The same by itself.
[[nodiscard]] std::optional<FSRef> locate(const AliasRecord &record, Replacement replacement,
                                          const SearchLimits &limits, OSStatus *status);

/// As FSRefMakePath(), for a path of any length.
[[nodiscard]] OSStatus currentPath(const FSRef &ref, QByteArray *path);
[[nodiscard]] OSStatus currentPath(const FSRef &ref, Effort &effort, QByteArray *path);

} // namespace MWCore
