// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FSRef.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/TimeBudget.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include <QByteArray>

/// Alias records, by which an item is found after it was renamed or moved, and alias files, which
/// contain a record. Any thread. A search through folders may take seconds; it stops with
/// userCanceledErr soon after @p cancelled, which may be null, becomes true.
namespace MWCore {

/// How many names the search for an alias in a listing reads before it gives up: some milliseconds.
constexpr int64_t kQuickSearchNames = 4096;

/// Sets @p alias to a record by which the item can be found again.
[[nodiscard]] MWCORE_EXPORT OSStatus FSNewAlias(const FSRef &target, QByteArray *alias);

/// Makes @p target refer to the item of the record @p alias. A new item at the same path counts as
/// the item. mapReadErr if @p alias is not a record of this library, fnfErr if the item is gone,
/// fileBoundsErr if more than @p searchedNames names would have to be read.
[[nodiscard]] MWCORE_EXPORT OSStatus FSResolveAlias(const QByteArray &alias, FSRef *target,
                                                    const std::atomic<bool> *cancelled = nullptr,
                                                    int64_t searchedNames = kMostSearchedNames);

/// The contents of a record. The item may have been moved since.
struct AliasInfo {
    QByteArray path;     ///< the absolute path from which the alias was made
    QByteArray realPath; ///< the same without links
    FileIdentity identity;
};

/// Reads a record without searching for its item. nullopt if @p alias is not a record of this
/// library.
[[nodiscard]] MWCORE_EXPORT std::optional<AliasInfo> aliasInfo(const QByteArray &alias);

/// The forms that an alias file can have.
enum class AliasFileForm {
    DesktopEntry, ///< a desktop entry of Type=Link that other desktops open as well
    Finder,       ///< an empty file with the alias flag and an 'alis' resource
};

/// Creates an alias file for @p target at @p path. dupFNErr if anything is there, bdNamErr if the
/// name of a desktop entry does not end with ".desktop".
[[nodiscard]] MWCORE_EXPORT OSStatus FSCreateAliasFile(const FSRef &target, const QByteArray &path,
                                                       AliasFileForm form);

/// The record in the alias file at @p path, for FSResolveAlias(). Empty if the file is a desktop
/// entry with only a URL, or not an alias file.
[[nodiscard]] MWCORE_EXPORT QByteArray aliasRecordInFile(const QByteArray &path);

/// How far a chain of alias files and links is followed.
enum class AliasSteps { One, All };

/// If @p ref is an alias file, makes it refer to the file's target after @p steps. Sets
/// @p wasAliased to whether @p ref was an alias file, and @p targetIsFolder to whether it now
/// refers to a folder. Any other item is left unchanged, with noErr. On failure @p ref is
/// unchanged: fnfErr if the target is gone, fileBoundsErr as above, errFSOperationNotSupported if
/// the URL is not local, errFSAliasLoop after more than 40 steps.
[[nodiscard]] MWCORE_EXPORT OSStatus FSResolveAliasFile(
    FSRef *ref, AliasSteps steps, bool *targetIsFolder, bool *wasAliased,
    const std::atomic<bool> *cancelled = nullptr, int64_t searchedNames = kMostSearchedNames);

/// Resolves the alias files of a listing. Together they take no longer than a time budget allows,
/// and they touch only local file systems and the one of the alias file. Belongs to one thread.
class MWCORE_EXPORT ListedAliases {
public:
    /// @p timeBudget must outlive this object.
    explicit ListedAliases(TimeBudget &timeBudget);
    ListedAliases(const ListedAliases &) = delete;
    ListedAliases &operator=(const ListedAliases &) = delete;
    ~ListedAliases();

    /// Sets @p target to the path, without links, of the final target of the alias file at @p path.
    /// Searches for a few milliseconds at most. fileBoundsErr if that or the time budget is not
    /// enough, or if a file system that may block would have to be touched; fnfErr if @p path is
    /// not an alias file; otherwise the failures of FSResolveAliasFile().
    [[nodiscard]] OSStatus resolve(const QByteArray &path, QByteArray *target);

private:
    struct State;

    TimeBudget &timeBudget_;
    std::unique_ptr<State> state_;
};

} // namespace MWCore
