// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/listing/Classification.h"

#include "core/mfs_fso.h"
#include "core/posix/Descriptor.h"
#include "core/posix/stat_fields.h"
#include "platform/aliases/Aliases.h"
#include "platform/aliases/AliasFollowing.h"
#include "platform/files/FolderBlock.h"
#include "platform/files/RegularFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/launch/AppImage.h"
#include "platform/launch/ApplicationFolder.h"
#include "platform/launch/ItemStatus.h"
#include "platform/launch/LaunchServices.h"
#include "platform/metadata/StoredMetadata.h"

#include <climits>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr uint32_t kApplicationType = 0x4150504C; // 'APPL'

/// Folder, file, or unknown for any other target.
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

/// Whether all names in the folder fit one block, so that inspecting it as an AppDir is fast.
bool hasFewNames(const QByteArray &folder) {
    const Descriptor opened = openFolderAt(AT_FDCWD, folder.constData(), FinalLink::Keep);
    FolderBlock names;
    return opened && names.fill(opened.number()) == FolderBlock::Outcome::AllRead;
}

/// Whether the folder may be inspected as an application.
bool mayInspect(const QByteArray &folder, const TimeBudget::Use &use,
                const InspectionContext &inspection) {
    return inspection.extent == InspectionContext::Extent::OneItem ||
           (use.isGranted() && hasFewNames(folder));
}

Classification classifyFolder(const QByteArray &path, const FinderInfo &info,
                              InspectionContext &inspection) {
    struct Row {
        LSItemInfoFlag flag;
        MXItemKind kind;
    };
    constexpr Row kRows[] = {
        // the first that matches counts
        {kLSItemInfoIsApplication, MXItemKindApplication},
        {kLSItemInfoIsPackage, MXItemKindPackage},
        {kLSItemInfoIsVolume, MXItemKindVolume},
    };
    std::optional<TimeBudget::Use> use;
    if (isRegularFile(appRunPath(path)) &&
        !mayInspect(path, use.emplace(inspection.timeBudget), inspection))
        return {.kind = itemStatus(path).isMountPoint ? MXItemKindVolume : MXItemKindFolder};
    LSItemInfoFlags flags;
    (void)LSCopyItemInfoForPath(path, info.flags, &flags);
    for (const Row &row : kRows)
        if (flags & row.flag)
            return {.kind = row.kind, .isPackaged = row.kind == MXItemKindApplication};
    return {.kind = MXItemKindFolder};
}

/// Whether the last component of @p path ends with @p withDot, ignoring case, and has more.
bool hasExtension(const QByteArray &path, QByteArrayView withDot) {
    const qsizetype start = path.size() - withDot.size();
    return start > 0 && path[start - 1] != '/' &&
           qstrnicmp(path.constData() + start, withDot.data(), std::size_t(withDot.size())) == 0;
}

/// Whether a file without a Finder type must be opened to find its kind: it is executable or has an
/// extension of applications (docs/decisions/0011).
bool mayBeApplication(const QByteArray &path, bool isExecutable) {
    return isExecutable || hasExtension(path, ".appimage") || path.endsWith(kDesktopEntrySuffix);
}

bool isApplicationFile(const AliasTarget &target) {
    const QByteArray &path = target.item.path;
    if (target.info.type != 0)
        return target.info.type == kApplicationType;
    return S_ISREG(target.mode) && mayBeApplication(path, hasExecuteBit(target.mode)) &&
           isPlainFileApplication(path);
}

ResolutionContext resolutionContext(const QByteArray &path, InspectionContext &inspection) {
    const bool isListing = inspection.extent == InspectionContext::Extent::Listing;
    ResolutionContext context({.entries = kQuickSearchNames, .timeBudget = &inspection.timeBudget},
                              inspection.mounts,
                              isListing ? RemoteAccess::None : RemoteAccess::Recorded);
    if (!inspection.ownMount)
        inspection.ownMount = mountAt(path);
    context.ownMount = inspection.ownMount;
    return context;
}

/// The classification of the alias file at @p path; nullopt if its target is gone. A listing must
/// not search the whole disk for each missing target, so an alias that would need a long search has
/// an unknown target.
std::optional<Classification> classifyAlias(const QByteArray &path, const AliasContent &content,
                                            InspectionContext &inspection) {
    ResolutionContext context = resolutionContext(path, inspection);
    OSStatus status = noErr;
    const auto target = followAlias(content, AliasSteps::All, context, &status);
    if (status == fileBoundsErr)
        return Classification{.kind = MXItemKindAlias};
    if (!target)
        return std::nullopt;
    if (target->isFolder)
        return Classification{.kind = MXItemKindAlias, .targetKind = MXItemKindFolder};
    if (isApplicationFile(*target)) // deliberately the application itself
        return Classification{.kind = MXItemKindApplication};
    return Classification{.kind = MXItemKindAlias, .targetKind = MXItemKindFile};
}

/// The classification by the file's contents, or @p byType, that of its Finder type.
Classification classifyContents(const QByteArray &path, const FinderInfo &info,
                                const Classification &byType, InspectionContext &inspection) {
    const auto entry = path.endsWith(kDesktopEntrySuffix) ? desktopEntryAt(path) : std::nullopt;
    const EntryContent content = entry ? contentOf(*entry) : EntryContent();
    const bool isFlagged = info.flags.testFlag(kIsAlias);
    const auto alias = content.lead || !isFlagged ? content.lead : aliasContentInFork(path);
    const auto byAlias = alias ? classifyAlias(path, *alias, inspection) : std::nullopt;
    if (byAlias)
        return *byAlias;
    if (info.type != 0)
        return byType;
    const bool isApplication =
        entry ? content.startsApplication || isAppImage(*entry) : isPlainFileApplication(path);
    return {.kind = isApplication ? MXItemKindApplication : MXItemKindFile};
}

Classification classifyFile(const QByteArray &path, const ItemFacts &facts, const FinderInfo &info,
                            InspectionContext &inspection) {
    const Classification byType = {.kind = info.type == kApplicationType ? MXItemKindApplication
                                                                         : MXItemKindFile};
    const bool isFlagged = info.flags.testFlag(kIsAlias);
    const bool isWorthALook = isFlagged || path.endsWith(kDesktopEntrySuffix) ||
                              (info.type == 0 && mayBeApplication(path, facts.isExecutable));
    if (!isWorthALook)
        return byType;
    const TimeBudget::Use use(inspection.timeBudget);
    if (use.isGranted())
        return classifyContents(path, info, byType, inspection);
    return isFlagged ? Classification{.kind = MXItemKindAlias} : byType;
}

Classification classifyFileOrFolder(const QByteArray &path, const ItemFacts &facts,
                                    InspectionContext &inspection) {
    const StoredMetadata stored = readStoredMetadataWithin(inspection.timeBudget, path,
                                                           StoredPart::FinderInfo, facts.sidecars);
    Classification found = facts.type == MFS_TYPE_DIRECTORY
                               ? classifyFolder(path, stored.finderInfo, inspection)
                               : classifyFile(path, facts, stored.finderInfo, inspection);
    if (stored.finderInfoStatus == noErr && !stored.finderInfo.flags)
        found.unflaggedState = facts.inodeState;
    return found;
}

} // namespace

Classification classify(const QByteArray &path, const ItemFacts &facts,
                        InspectionContext &inspection) {
    if (path.size() >= PATH_MAX)
        return {}; // too long for a system call
    switch (facts.type) {
    case MFS_TYPE_DIRECTORY:
    case MFS_TYPE_FILE:
        return classifyFileOrFolder(path, facts, inspection);
    case MFS_TYPE_LINK:
        if (facts.targetType == MFS_TARGET_UNKNOWN)
            return {}; // broken
        return {.kind = MXItemKindLink, .targetKind = targetKindOf(facts.targetType)};
    default:
        return {};
    }
}

} // namespace MWCore
