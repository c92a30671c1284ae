// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/Classification.h"

#include "core/mfs_fso.h"
#include "platform/aliases/Aliases.h"
#include "platform/launch/LaunchServices.h"
#include "platform/metadata/MetadataStore.h"

#include <climits>
#include <optional>

#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr uint32_t kApplicationType = 0x4150504C; // 'APPL'

/// 1 folder, 2 file; any other target has no code.
MXItemKind targetKindOf(int32_t targetType) {
    switch (targetType) {
    case MFS_TYPE_DIRECTORY:
        return MXItemKindFolder;
    case MFS_TYPE_FILE:
        return MXItemKindFile;
    default:
        return MXItemKindUnknown;
    }
}

bool isExecutable(const struct stat &item) {
    return (item.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH)) != 0;
}

FinderInfo finderInfoOf(const QByteArray &path, bool hasSidecar) {
    FinderInfo info;
    const auto sidecars = hasSidecar ? Sidecars::MayExist : Sidecars::Absent;
    return readFinderInfo(path, &info, sidecars) == noErr ? info : FinderInfo();
}

Classification classifyFolder(const QByteArray &path, const ItemFacts &facts) {
    struct Row {
        uint32_t flag;
        MXItemKind kind;
    };
    constexpr Row kRows[] = {
        // the first that matches counts
        {kLSItemInfoIsApplication, MXItemKindApplication},
        {kLSItemInfoIsPackage, MXItemKindPackage},
        {kLSItemInfoIsVolume, MXItemKindVolume},
    };
    uint32_t flags = 0;
    (void)LSCopyItemInfoForPath(path, finderInfoOf(path, facts.hasSidecar).flags, &flags);
    for (const Row &row : kRows)
        if (flags & row.flag)
            return {.kind = row.kind, .isPackaged = row.kind == MXItemKindApplication};
    return {.kind = MXItemKindFolder};
}

/// Whether the name at the end of @p path has the extension; a name that is nothing else has not.
bool hasExtension(const QByteArray &path, QByteArrayView withDot) {
    const qsizetype start = path.size() - withDot.size();
    return start > 0 && path[start - 1] != '/' &&
           qstrnicmp(path.constData() + start, withDot.data(), std::size_t(withDot.size())) == 0;
}

/// Whether a file that has no type of its own is worth opening: a program may be executed, or has a
/// name that says what it is (docs/decisions/0011).
bool mayBeApplication(const QByteArray &path, bool isExecutable) {
    return isExecutable || hasExtension(path, ".appimage") || hasExtension(path, ".desktop");
}

bool isApplicationFile(const QByteArray &path, const FinderInfo &info, bool isExecutable) {
    if (info.type != 0)
        return info.type == kApplicationType;
    return mayBeApplication(path, isExecutable) && isPlainFileApplication(path);
}

/// What the alias file at @p path leads to, and nothing else, means; nothing for no alias file, or
/// one that leads nowhere. A listing must not search the whole disk for each item that is gone: an
/// alias that would need that is one with an unknown target.
std::optional<Classification> classifyAlias(const QByteArray &path) {
    constexpr bool kResolvingChains = true;
    constexpr int64_t kSearchedNames = 4096; // some milliseconds
    FSRef ref;
    bool isAlias = false;
    bool targetIsFolder = false;
    if (FSPathMakeRef(path, &ref) != noErr)
        return std::nullopt;
    const OSStatus status = FSResolveAliasFile(&ref, kResolvingChains, &targetIsFolder, &isAlias,
                                               nullptr, kSearchedNames);
    if (status == fileBoundsErr)
        return Classification{.kind = MXItemKindAlias};
    if (status != noErr || !isAlias)
        return std::nullopt;
    if (targetIsFolder)
        return Classification{.kind = MXItemKindAlias, .targetKind = MXItemKindFolder};
    struct stat target = {};
    const bool isFile = lstat(ref.path.constData(), &target) == 0 && S_ISREG(target.st_mode);
    // Deliberately the application itself.
    if (isFile && isApplicationFile(ref.path, finderInfoOf(ref.path, true), isExecutable(target)))
        return Classification{.kind = MXItemKindApplication};
    return Classification{.kind = MXItemKindAlias, .targetKind = MXItemKindFile};
}

Classification classifyFile(const QByteArray &path, const ItemFacts &facts) {
    const FinderInfo info = finderInfoOf(path, facts.hasSidecar);
    if ((info.flags & kIsAlias) || path.endsWith(".desktop"))
        if (const auto alias = classifyAlias(path))
            return *alias;
    const bool isApplication = isApplicationFile(path, info, facts.isExecutable);
    return {.kind = isApplication ? MXItemKindApplication : MXItemKindFile};
}

} // namespace

Classification classify(const QByteArray &path, const ItemFacts &facts) {
    if (path.size() >= PATH_MAX)
        return {}; // no system call takes it
    switch (facts.type) {
    case MFS_TYPE_DIRECTORY:
        return classifyFolder(path, facts);
    case MFS_TYPE_FILE:
        return classifyFile(path, facts);
    case MFS_TYPE_LINK:
        if (facts.targetType == MFS_TARGET_UNKNOWN)
            return {}; // leads nowhere
        return {.kind = MXItemKindLink, .targetKind = targetKindOf(facts.targetType)};
    default:
        return {};
    }
}

} // namespace MWCore
