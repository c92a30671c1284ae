// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/listing/Classification.h"

#include "core/mfs_fso.h"
#include "core/posix/Descriptor.h"
#include "core/posix/stat_fields.h"
#include "platform/aliases/Aliases.h"
#include "platform/aliases/AliasFileFormat.h"
#include "platform/aliases/AliasFollowing.h"
#include "platform/files/FolderBlock.h"
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

FinderInfo finderInfoOf(const QByteArray &path, const ItemFacts &facts,
                        InspectionContext &inspection) {
    return readStoredMetadataWithin(inspection.timeBudget, path, StoredPart::FinderInfo,
                                    facts.sidecars)
        .finderInfo;
}

/// Whether a look at what may be an AppDir, all of whose names are read, is short.
bool hasFewNames(const QByteArray &folder) {
    const Descriptor opened(
        open(folder.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    FolderBlock names;
    return opened && names.fill(opened.number()) == FolderBlock::Outcome::AllRead;
}

/// Whether it may be told that the folder is an application.
bool mayBeAsked(const QByteArray &folder, const TimeBudget::Use &look,
                const InspectionContext &inspection) {
    return inspection.extent == InspectionContext::Extent::OneItem ||
           (look.isGranted() && hasFewNames(folder));
}

Classification classifyFolder(const QByteArray &path, const ItemFacts &facts,
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
    const FinderInfo info = finderInfoOf(path, facts, inspection);
    std::optional<TimeBudget::Use> look;
    if (isRegularFile(appRunPath(path)) &&
        !mayBeAsked(path, look.emplace(inspection.timeBudget), inspection))
        return {.kind = itemStatus(path).isMountPoint ? MXItemKindVolume : MXItemKindFolder};
    LSItemInfoFlags flags;
    (void)LSCopyItemInfoForPath(path, info.flags, &flags);
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

bool isApplicationFile(const AliasTarget &target) {
    const QByteArray &path = target.item.path;
    if (target.info.type != 0)
        return target.info.type == kApplicationType;
    return S_ISREG(target.mode) && mayBeApplication(path, hasExecuteBit(target.mode)) &&
           isPlainFileApplication(path);
}

ResolutionContext effortFor(const QByteArray &path, InspectionContext &inspection) {
    const bool isListing = inspection.extent == InspectionContext::Extent::Listing;
    ResolutionContext context({.entries = kQuickSearchNames, .timeBudget = &inspection.timeBudget},
                              inspection.mounts,
                              isListing ? RemoteAccess::None : RemoteAccess::Recorded);
    if (!inspection.ownMount)
        inspection.ownMount = mountAt(path);
    context.ownMount = inspection.ownMount;
    return context;
}

/// What the alias file at @p path leads to, and nothing else, means; nothing for one that leads
/// nowhere. A listing must not search the whole disk for each item that is gone: an alias that
/// would need that is one with an unknown target.
std::optional<Classification> classifyAlias(const QByteArray &path, const AliasContent &lead,
                                            InspectionContext &inspection) {
    ResolutionContext context = effortFor(path, inspection);
    OSStatus status = noErr;
    const auto target = followAlias(lead, AliasSteps::All, context, &status);
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

/// An AppImage may have any name.
bool mayBeProgram(const QByteArray &content) {
    return content.startsWith("\x7F"
                              "ELF");
}

/// What a look into the file tells; @p byType is what its Finder type says.
Classification lookInto(const QByteArray &path, const FinderInfo &info,
                        const Classification &byType, InspectionContext &inspection) {
    const auto entry = path.endsWith(kAliasFileSuffix) ? desktopEntryAt(path) : std::nullopt;
    const EntryContent content = entry ? contentOf(*entry) : EntryContent();
    const bool isFlagged = info.flags.testFlag(kIsAlias);
    const auto lead = content.lead || !isFlagged ? content.lead : aliasContentInFork(path);
    const auto alias = lead ? classifyAlias(path, *lead, inspection) : std::nullopt;
    if (alias)
        return *alias;
    if (info.type != 0)
        return byType;
    const bool isApplication =
        entry && !mayBeProgram(*entry) ? content.startsApplication : isPlainFileApplication(path);
    return {.kind = isApplication ? MXItemKindApplication : MXItemKindFile};
}

Classification classifyFile(const QByteArray &path, const ItemFacts &facts,
                            InspectionContext &inspection) {
    const FinderInfo info = finderInfoOf(path, facts, inspection);
    const Classification byType = {.kind = info.type == kApplicationType ? MXItemKindApplication
                                                                         : MXItemKindFile};
    const bool isFlagged = info.flags.testFlag(kIsAlias);
    const bool isWorthALook = isFlagged || path.endsWith(kAliasFileSuffix) ||
                              (info.type == 0 && mayBeApplication(path, facts.isExecutable));
    if (!isWorthALook)
        return byType;
    const TimeBudget::Use look(inspection.timeBudget);
    if (look.isGranted())
        return lookInto(path, info, byType, inspection);
    return isFlagged ? Classification{.kind = MXItemKindAlias} : byType;
}

} // namespace

Classification classify(const QByteArray &path, const ItemFacts &facts,
                        InspectionContext &inspection) {
    if (path.size() >= PATH_MAX)
        return {}; // no system call takes it
    switch (facts.type) {
    case MFS_TYPE_DIRECTORY:
        return classifyFolder(path, facts, inspection);
    case MFS_TYPE_FILE:
        return classifyFile(path, facts, inspection);
    case MFS_TYPE_LINK:
        if (facts.targetType == MFS_TARGET_UNKNOWN)
            return {}; // leads nowhere
        return {.kind = MXItemKindLink, .targetKind = targetKindOf(facts.targetType)};
    default:
        return {};
    }
}

} // namespace MWCore
