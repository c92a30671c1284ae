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

/// @p path with all links resolved. Returns an empty path and sets `errno` on failure.
[[nodiscard]] QByteArray withoutLinks(const QByteArray &path);

/// What to do with another item at the stored path.
enum class Replacement {
    Accept, ///< programs save by replacing the old file with a new one
    Reject,
};

/// Which file systems that are not local, and so may block, a resolution may touch.
enum class RemoteAccess {
    Recorded, ///< the one that the item was on
    None,     ///< only the one of the alias file itself; resolved paths have no links, which may be
              ///< slow to follow
};

/// What all steps of one resolution share, even along a chain of alias files.
struct ResolutionContext {
    explicit ResolutionContext(SearchLimits limits, MountSnapshot &snapshot,
                               RemoteAccess shown = RemoteAccess::Recorded)
        : budget(limits), mounts(snapshot), remoteAccess(shown) {}

    SearchBudget budget;
    MountSnapshot &mounts;
    RemoteAccess remoteAccess;
    std::optional<int32_t> ownMount; ///< id of the mount that the alias file itself is on
};

/// The alias record of the item at @p path, which is absolute. nullopt on failure, with the cause
/// in @p status.
[[nodiscard]] std::optional<AliasRecord> aliasRecordOf(const QByteArray &path, OSStatus *status);

/// The same for a reference, whose item need no longer be at its path.
[[nodiscard]] AliasRecord recordOf(const FSRef &ref);

/// Finds the item of @p record. Tries, in this order: the stored path; the same path where its file
/// system is mounted now; the file handle, if the kernel permits it; the names in the stored parent
/// folder, which is found even if folders on its path were renamed; any item at the stored path, if
/// @p replacement allows it; everything below the home folder or the mount point. Searches nothing
/// if its file system is not mounted. nullopt on failure, with the cause in @p status: permErr if
/// the item's folder may not be entered, the status of the budget if the search was cut short.
[[nodiscard]] std::optional<FSRef> locate(const AliasRecord &record, Replacement replacement,
                                          ResolutionContext &context, OSStatus *status);

/// The same with limits of its own.
[[nodiscard]] std::optional<FSRef> locate(const AliasRecord &record, Replacement replacement,
                                          const SearchLimits &limits, OSStatus *status);

/// Like FSRefMakePath(), for a path of any length.
[[nodiscard]] OSStatus currentPath(const FSRef &ref, QByteArray *path);
[[nodiscard]] OSStatus currentPath(const FSRef &ref, ResolutionContext &context, QByteArray *path);

} // namespace MWCore
