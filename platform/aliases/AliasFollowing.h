// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/metadata/FinderInfo.h"
#include "platform/references/AliasResolution.h"

#include <sys/stat.h>

/// FSResolveAlias() and FSResolveAliasFile() for callers that share one effort between many steps.
/// Belongs to the thread of the effort.
namespace MWCore {

[[nodiscard]] OSStatus resolveAlias(const QByteArray &alias, FSRef *target, Effort &effort);

/// What an alias file leads to: a record, an address, or both.
struct Lead {
    QByteArray record;
    QByteArray url;
};

/// Nothing for what is no alias file.
[[nodiscard]] std::optional<Lead> leadIn(const QByteArray &path);

// For callers that know more of the file already.

/// The desktop entry at @p path, where a plain file was just seen: the first 64 KB. Nothing on
/// failure.
[[nodiscard]] std::optional<QByteArray> desktopEntryAt(const QByteArray &path);

/// What a desktop entry is.
struct EntryContent {
    bool startsApplication = false;
    std::optional<Lead> lead; ///< of an alias
};
[[nodiscard]] EntryContent contentOf(const QByteArray &entry);

/// Of the file at @p path, which has the alias flag. Nothing without a record.
[[nodiscard]] std::optional<Lead> leadInForkOf(const QByteArray &path);

/// The id of the mount that the item at @p path is on; nothing where the system does not tell.
[[nodiscard]] std::optional<int32_t> mountAt(const QByteArray &path);

/// What a chain of alias files and links leads to in the end.
struct AliasTarget {
    FSRef item;
    bool isFolder = false; ///< also of a link to one, where links are not followed
    // At the end of a whole chain:
    mode_t mode = 0;
    FinderInfo info; ///< of a plain file
};

/// Follows @p lead, what the first alias file of the chain holds; with @p resolveAliasChains also
/// those that come after it. Nothing on failure, with the cause in @p status.
[[nodiscard]] std::optional<AliasTarget> followLead(const Lead &lead, bool resolveAliasChains,
                                                    Effort &effort, OSStatus *status);

} // namespace MWCore
