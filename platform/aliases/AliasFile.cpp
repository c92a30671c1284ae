// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/private/Descriptor.h"
#include "platform/aliases/Aliases.h"
#include "platform/aliases/AliasFileFormat.h"
#include "platform/aliases/AliasFollowing.h"
#include "platform/aliases/FileUrl.h"
#include "platform/files/ItemIdentity.h"
#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/formats/BigEndian.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/formats/ResourceLocation.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/metadata/ForkReader.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/Reach.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int kMostSteps = 40; // as the kernel follows links

/// The record in the first resource of aliases; nothing where there is none, or one too long to be
/// a record.
std::optional<QByteArray> recordInFork(const ForkReader &fork) {
    constexpr uint64_t kLongestMap = 65536; ///< its offsets have 16 bits
    const auto areas = forkAreasOf(fork.read(0, ForkAreas::kHeadLength), fork.length());
    const auto map =
        areas ? fork.read(areas->map, std::min(areas->mapLength, kLongestMap)) : QByteArray();
    const auto offset = firstResourceOffset(map, kAliasResource);
    if (!offset || *offset > areas->dataLength)
        return std::nullopt;
    const uint64_t rest = areas->dataLength - *offset;
    const QByteArray head = fork.read(areas->data + *offset, sizeof(uint32_t));
    const auto length = numberAt<uint32_t>(head, 0);
    if (!length || *length > AliasRecord::kLongest || *length + sizeof *length > rest)
        return std::nullopt;
    return fork.read(areas->data + *offset + sizeof *length, *length);
}

std::optional<Lead> leadInFork(const QByteArray &path) {
    FinderInfo info;
    struct stat item = {};
    if (lstat(path.constData(), &item) != 0 || !S_ISREG(item.st_mode) ||
        readFinderInfo(path, &info) != noErr || !(info.flags & kIsAlias))
        return std::nullopt;
    return leadInForkOf(path);
}

/// Where a path or link leads. A listing does not wait for it.
OSStatus referTo(const QByteArray &path, LastLink link, Effort &effort, FSRef *target) {
    Reach reach(effort.mounts, effort.budget);
    if (effort.patience == Patience::ForRecorded)
        reach.allowAll();
    else if (effort.ownMount)
        reach.allow(*effort.ownMount);
    const QByteArray name = PathParts(path).name;
    const bool needsName = link == LastLink::Follow || name == "." || name == "..";
    int error = 0;
    QByteArray real;
    const Descriptor item = reach.open(path, link, &error, needsName ? &real : nullptr);
    if (effort.budget.hasStopped())
        return effort.budget.status();
    if (!item)
        return error == EXDEV ? fileBoundsErr : statusFromErrno(error);
    OSStatus status = noErr;
    if (auto identity = identityOf(item.number(), "", &status))
        *target = {needsName ? real : path, std::move(*identity)};
    return status;
}

OSStatus follow(const Lead &lead, FSRef *target, Effort &effort) {
    OSStatus status = mapReadErr;
    if (!lead.record.isEmpty())
        status = resolveAlias(lead.record, target, effort);
    if (status != mapReadErr)
        return status;
    const auto path = pathOfFileUrl(lead.url);
    if (path)
        return referTo(*path, LastLink::Keep, effort, target);
    return lead.url.isEmpty() ? mapReadErr : errFSOperationNotSupported;
}

bool isLink(const QByteArray &path) {
    struct stat item = {};
    return lstat(path.constData(), &item) == 0 && S_ISLNK(item.st_mode);
}

bool isFolder(const QByteArray &path) {
    struct stat item = {};
    return stat(path.constData(), &item) == 0 && S_ISDIR(item.st_mode);
}

/// The mount that an item is on, when its number is known.
std::optional<int32_t> mountAt(const QByteArray &path) {
    const uint64_t number = mountIdOf(AT_FDCWD, path.constData());
    return number == 0 ? std::nullopt : std::optional(static_cast<int32_t>(number));
}

} // namespace

std::optional<Lead> leadInDesktopEntry(const DesktopEntry &entry) {
    const auto [type, url, record] =
        entry.values(DesktopEntry::kMainGroup,
                     std::array{QByteArrayView("Type"), QByteArrayView("URL"), kAliasRecordKey});
    const auto bytes = [](const std::optional<QString> &text) {
        return fileSystemRepresentation(text.value_or(QString())).value_or(QByteArray());
    };
    const QByteArray address = type == u"Link" ? bytes(url) : QByteArray();
    if (address.isEmpty())
        return std::nullopt;
    return Lead{QByteArray::fromBase64(bytes(record)), address};
}

std::optional<Lead> leadInForkOf(const QByteArray &path) {
    OSStatus status = noErr;
    const auto fork = ForkReader::open(path, &status);
    const auto record = fork ? recordInFork(*fork) : std::nullopt;
    return record ? std::optional(Lead{*record, {}}) : std::nullopt;
}

std::optional<QByteArray> desktopEntryAt(const QByteArray &path) {
    OSStatus status = noErr;
    const Descriptor file = openRegularFile(path, Links::Keep, &status);
    struct stat item = {};
    if (!file || fstat(file.number(), &item) != 0)
        return std::nullopt;
    return readAt(file.number(), 0, std::min<int64_t>(item.st_size, kLongestAliasEntry), &status);
}

std::optional<Lead> leadIn(const QByteArray &path) {
    std::optional<Lead> lead;
    if (path.endsWith(kAliasFileSuffix))
        if (const auto bytes = desktopEntryAt(path))
            lead = leadInDesktopEntry(DesktopEntry(*bytes));
    return lead ? lead : leadInFork(path);
}

std::optional<AliasTarget> followLead(const Lead &lead, bool resolveAliasChains, Effort &effort,
                                      OSStatus *status) {
    AliasTarget target;
    std::optional<Lead> next = lead;
    for (int steps = 0; steps < kMostSteps; ++steps) {
        *status = next ? follow(*next, &target.item, effort)
                       : referTo(target.item.path, LastLink::Follow, effort, &target.item);
        if (*status != noErr)
            return std::nullopt;
        const QByteArray &path = target.item.path;
        next = resolveAliasChains ? leadIn(path) : std::nullopt;
        if (!next && !(resolveAliasChains && isLink(path))) {
            target.isFolder = isFolder(path);
            return target;
        }
    }
    *status = errFSAliasLoop;
    return std::nullopt;
}

QByteArray aliasRecordInFile(const QByteArray &path) {
    const auto lead = leadIn(path);
    return lead ? lead->record : QByteArray();
}

OSStatus FSResolveAliasFile(FSRef *ref, bool resolveAliasChains, bool *targetIsFolder,
                            bool *wasAliased, const std::atomic<bool> *cancelled,
                            int64_t searchedNames) {
    MountSnapshot mounts;
    Effort effort({.entries = searchedNames, .cancelled = cancelled}, mounts);
    QByteArray path;
    OSStatus status = currentPath(*ref, effort, &path);
    if (status != noErr)
        return status;
    const auto lead = leadIn(path);
    *wasAliased = lead.has_value();
    if (!lead) {
        *targetIsFolder = isFolder(path);
        return noErr;
    }
    effort.ownMount = mountAt(path);
    const auto target = followLead(*lead, resolveAliasChains, effort, &status);
    if (!target)
        return status;
    *targetIsFolder = target->isFolder;
    *ref = target->item;
    return noErr;
}

} // namespace MWCore
