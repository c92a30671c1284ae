// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/aliases/Aliases.h"
#include "platform/metadata/FinderInfo.h"
#include "platform/references/AliasResolution.h"

#include <sys/stat.h>

/// FSResolveAlias() and FSResolveAliasFile() for callers that share one context between many steps.
/// Belongs to the thread of the context.
namespace MWCore {

[[nodiscard]] OSStatus resolveAlias(const QByteArray &alias, FSRef *target,
                                    ResolutionContext &context);

/// What an alias file holds to find its target: a record, a URL, or both.
struct AliasContent {
    QByteArray record;
    QByteArray url;
};

/// nullopt if @p path is not an alias file.
[[nodiscard]] std::optional<AliasContent> aliasContentIn(const QByteArray &path);

// For callers that already know more about the file.

/// The first 64 KB of the desktop entry at @p path, where the caller just saw a regular file.
/// nullopt on failure.
[[nodiscard]] std::optional<QByteArray> desktopEntryAt(const QByteArray &path);

/// What a desktop entry opens.
struct EntryContent {
    bool startsApplication = false;
    std::optional<AliasContent> lead; ///< if it is an alias
};
[[nodiscard]] EntryContent contentOf(const QByteArray &entry);

/// The lead in the resource fork of the file at @p path, which has the alias flag. nullopt if the
/// fork has no record.
[[nodiscard]] std::optional<AliasContent> aliasContentInFork(const QByteArray &path);

/// The id of the mount that the item at @p path is on; nullopt if it cannot be found.
[[nodiscard]] std::optional<int32_t> mountAt(const QByteArray &path);

/// The item to which a chain of alias files and links leads.
struct AliasTarget {
    FSRef item;
    bool isFolder = false; ///< also for a link to a folder, if the chain is not followed
    // Filled only if the whole chain was followed:
    mode_t mode = 0;
    FinderInfo info; ///< of a regular file
};

/// Follows @p lead, the content of the first alias file of a chain; if @p resolveAliasChains is
/// true, also the alias files and links after it. nullopt on failure, with the cause in @p status.
[[nodiscard]] std::optional<AliasTarget> followAlias(const AliasContent &lead, AliasSteps steps,
                                                     ResolutionContext &context, OSStatus *status);

} // namespace MWCore
