// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FSRef.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/TimeAllowance.h>

#include <atomic>
#include <cstdint>
#include <memory>

#include <QByteArray>

/// Alias records, which find an item again that was renamed or moved, and alias files, which hold
/// one. Any thread; a search through folders may take seconds and stops soon after
/// @p cancelled, which may be null, becomes true, with userCanceledErr.
namespace MWCore {

/// How many names a search looks at before it gives up.
constexpr int64_t kMostSearchedNames = 4'000'000;

/// How many it looks at where nobody asked for one item: some milliseconds.
constexpr int64_t kNamesOfAQuickSearch = 4096;

/// Writes down in @p alias what it takes to find the item again.
[[nodiscard]] MWCORE_EXPORT OSStatus FSNewAlias(const FSRef &target, QByteArray *alias);

/// Where the item of the record @p alias is now; something else put in its place counts as it.
/// mapReadErr for bytes that are no record of this library, fnfErr when the item is gone,
/// fileBoundsErr when more than @p searchedNames would have to be searched.
[[nodiscard]] MWCORE_EXPORT OSStatus FSResolveAlias(const QByteArray &alias, FSRef *target,
                                                    const std::atomic<bool> *cancelled = nullptr,
                                                    int64_t searchedNames = kMostSearchedNames);

/// The forms that an alias file can have.
enum class AliasFileForm {
    DesktopEntry, ///< a desktop entry of Type=Link that other desktops open as well
    Finder,       ///< an empty file with the alias flag and an 'alis' resource
};

/// Writes an alias file for @p target at @p path, where nothing may be: dupFNErr. A desktop entry
/// has a name that ends with ".desktop": bdNamErr.
[[nodiscard]] MWCORE_EXPORT OSStatus FSCreateAliasFile(const FSRef &target, const QByteArray &path,
                                                       AliasFileForm form);

/// The record that the alias file at @p path holds, as FSResolveAlias() takes it; empty for a
/// desktop entry with nothing but a URL, and for what is no alias file.
[[nodiscard]] MWCORE_EXPORT QByteArray aliasRecordInFile(const QByteArray &path);

/// If @p ref is an alias file, makes it refer to what the file leads to; with
/// @p resolveAliasChains to the end of a chain of alias files and links. @p wasAliased and
/// @p targetIsFolder tell of it. A file that is none of these is a success that changes nothing.
/// fnfErr when the target is gone, fileBoundsErr as above, errFSOperationNotSupported for an
/// address that is not local, and errFSAliasLoop after more than 40 steps; @p ref is unchanged
/// then.
[[nodiscard]] MWCORE_EXPORT OSStatus FSResolveAliasFile(
    FSRef *ref, bool resolveAliasChains, bool *targetIsFolder, bool *wasAliased,
    const std::atomic<bool> *cancelled = nullptr, int64_t searchedNames = kMostSearchedNames);

/// Resolves the alias files of a listing: together they take no longer than an allowance grants,
/// and they wait for no file system that is not local, unless the alias file itself lies there.
/// Belongs to one thread.
class MWCORE_EXPORT ListedAliases {
public:
    /// @p allowance must outlive this object.
    explicit ListedAliases(TimeAllowance &allowance);
    ListedAliases(const ListedAliases &) = delete;
    ListedAliases &operator=(const ListedAliases &) = delete;
    ~ListedAliases();

    /// Where the alias file at @p path leads in the end, without links on the way. Some
    /// milliseconds of searching at most: fileBoundsErr where that or the allowance does not
    /// suffice or it would have to wait. Else as FSResolveAliasFile(), but fnfErr for what is no
    /// alias file.
    [[nodiscard]] OSStatus resolve(const QByteArray &path, QByteArray *target);

private:
    struct Looks;

    TimeAllowance &allowance_;
    std::unique_ptr<Looks> looks_;
};

} // namespace MWCore
