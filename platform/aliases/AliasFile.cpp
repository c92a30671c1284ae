// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/posix/Descriptor.h"
#include "platform/aliases/Aliases.h"
#include "platform/aliases/AliasFileFormat.h"
#include "platform/aliases/AliasFollowing.h"
#include "platform/aliases/FileUrl.h"
#include "platform/files/DescriptorPath.h"
#include "platform/files/ItemIdentity.h"
#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/metadata/ForkReader.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/MountGuard.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

/// What is known of one item of a chain after examining it once.
struct ChainItem {
    mode_t mode = 0;
    FinderInfo info; ///< of a regular file, unless it is an alias as a desktop entry
    std::optional<AliasContent> lead;
};

ChainItem chainItemAt(const QByteArray &path) {
    ChainItem current;
    struct stat item = {};
    if (lstat(path.constData(), &item) != 0)
        return current;
    current.mode = item.st_mode;
    if (!S_ISREG(current.mode))
        return current;
    if (path.endsWith(kDesktopEntrySuffix))
        if (const auto entry = desktopEntryAt(path))
            current.lead = contentOf(*entry).lead;
    const bool isFlagged = !current.lead && readFinderInfo(path, &current.info) == noErr &&
                           current.info.flags.testFlag(kIsAlias);
    if (isFlagged)
        current.lead = aliasContentInFork(path);
    return current;
}

/// Makes @p target refer to the item at @p path. Fails instead of touching a file system that
/// @p context does not allow.
OSStatus referTo(const QByteArray &path, FinalLink link, ResolutionContext &context,
                 FSRef *target) {
    MountGuard guard(context.mounts, context.budget);
    if (context.remoteAccess == RemoteAccess::Recorded)
        guard.allowAll();
    else if (context.ownMount)
        guard.allow(*context.ownMount);
    const QByteArray name = PathParts(path).name;
    const bool needsName = context.remoteAccess == RemoteAccess::None ||
                           link == FinalLink::Follow || name == "." || name == "..";
    OSStatus status = noErr;
    QByteArray real;
    const Descriptor item = guard.open(path, link, &status, needsName ? &real : nullptr);
    if (context.budget.hasStopped())
        return context.budget.status();
    if (!item)
        return status;
    if (auto identity = identityOf(item.number(), "", &status))
        *target = {needsName ? real : path, std::move(*identity)};
    return status;
}

OSStatus follow(const AliasContent &lead, FSRef *target, ResolutionContext &context) {
    OSStatus status = mapReadErr;
    if (!lead.record.isEmpty())
        status = resolveAlias(lead.record, target, context);
    if (status != mapReadErr)
        return status;
    const auto path = pathOfFileUrl(lead.url);
    if (path)
        return referTo(*path, FinalLink::Keep, context, target);
    return lead.url.isEmpty() ? mapReadErr : errFSOperationNotSupported;
}

bool isFolder(const QByteArray &path) {
    struct stat item = {};
    return stat(path.constData(), &item) == 0 && S_ISDIR(item.st_mode);
}

} // namespace

std::optional<int32_t> mountAt(const QByteArray &path) {
    const uint64_t number = mountIdOf(AT_FDCWD, path.constData());
    return number == 0 ? std::nullopt : std::optional(static_cast<int32_t>(number));
}

EntryContent contentOf(const QByteArray &entry) {
    const auto [type, url, record] = DesktopEntry(entry).values(
        DesktopEntry::kMainGroup,
        std::array{QByteArrayView("Type"), QByteArrayView("URL"), kAliasRecordKey});
    const auto bytes = [](const std::optional<QString> &text) {
        return fileSystemRepresentation(text.value_or(QString())).value_or(QByteArray());
    };
    const QByteArray address = type == u"Link" ? bytes(url) : QByteArray();
    if (address.isEmpty())
        return {.startsApplication = type == u"Application", .lead = std::nullopt};
    return {.startsApplication = false,
            .lead = AliasContent{QByteArray::fromBase64(bytes(record)), address}};
}

std::optional<AliasContent> aliasContentInFork(const QByteArray &path) {
    OSStatus status = noErr;
    const auto fork = ForkReader::open(path, &status);
    const auto record =
        fork ? fork->firstResource(kAliasResource, AliasRecord::kLongest) : std::nullopt;
    return record ? std::optional(AliasContent{*record, {}}) : std::nullopt;
}

std::optional<QByteArray> desktopEntryAt(const QByteArray &path) {
    // Nonblocking, because a fifo may have replaced the file. openRegularFile(), which opens
    // another descriptor first, would take as long as all the rest.
    constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const Descriptor file(open(path.constData(), kFlags));
    struct stat item = {};
    OSStatus status = noErr;
    if (!file || fstat(file.number(), &item) != 0 || !S_ISREG(item.st_mode))
        return std::nullopt;
    return readAt(file.number(), 0, std::min<int64_t>(item.st_size, kLongestDesktopEntry), &status);
}

std::optional<AliasContent> aliasContentIn(const QByteArray &path) {
    return chainItemAt(path).lead;
}

std::optional<AliasTarget> followAlias(const AliasContent &lead, AliasSteps steps,
                                       ResolutionContext &context, OSStatus *status) {
    FSRef at;
    ChainItem current = {.mode = 0, .info = {}, .lead = lead};
    for (int step = 0; step < kMostLinks; ++step) {
        *status = current.lead ? follow(*current.lead, &at, context)
                               : referTo(at.path, FinalLink::Follow, context, &at);
        if (*status != noErr)
            return std::nullopt;
        if (steps == AliasSteps::One)
            return AliasTarget{at, isFolder(at.path), 0, {}};
        current = chainItemAt(at.path);
        if (!current.lead && !S_ISLNK(current.mode))
            return AliasTarget{at, S_ISDIR(current.mode), current.mode, current.info};
    }
    *status = errFSAliasLoop;
    return std::nullopt;
}

QByteArray aliasRecordInFile(const QByteArray &path) {
    const auto lead = aliasContentIn(path);
    return lead ? lead->record : QByteArray();
}

OSStatus FSResolveAliasFile(FSRef *ref, AliasSteps steps, bool *targetIsFolder, bool *wasAliased,
                            const std::atomic<bool> *cancelled, int64_t searchedNames) {
    MountSnapshot mounts;
    ResolutionContext context({.entries = searchedNames, .cancelled = cancelled}, mounts);
    QByteArray path;
    OSStatus status = currentPath(*ref, context, &path);
    if (status != noErr)
        return status;
    const auto lead = aliasContentIn(path);
    *wasAliased = lead.has_value();
    if (!lead) {
        *targetIsFolder = isFolder(path);
        return noErr;
    }
    context.ownMount = mountAt(path);
    const auto target = followAlias(*lead, steps, context, &status);
    if (!target)
        return status;
    *targetIsFolder = target->isFolder;
    *ref = target->item;
    return noErr;
}

} // namespace MWCore
