// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/Aliases.h"
#include "platform/aliases/AliasFileFormat.h"
#include "platform/aliases/FileUrl.h"
#include "platform/catalogue/ResourceFile.h"
#include "platform/files/RegularFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/AliasResolution.h"

#include <cerrno>

#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int64_t kLongestEntry = 1 << 20;
constexpr int kMostSteps = 40; // as the kernel follows links

/// What an alias file leads to: a record, an address, or both.
struct Lead {
    QByteArray record;
    QByteArray url;
};

/// Nothing for what is no alias file.
std::optional<Lead> leadInDesktopEntry(const QByteArray &path) {
    OSStatus status = noErr;
    const auto bytes = readRegularFile(path, kLongestEntry, Links::Keep, &status);
    if (!bytes)
        return std::nullopt;
    const DesktopEntry entry(*bytes);
    const auto text = [&entry](QByteArrayView key) {
        return fileSystemRepresentation(
                   entry.value(DesktopEntry::kMainGroup, key).value_or(QString()))
            .value_or(QByteArray());
    };
    if (text("Type") != "Link" || text("URL").isEmpty())
        return std::nullopt;
    return Lead{QByteArray::fromBase64(text(kAliasRecordKey)), text("URL")};
}

std::optional<Lead> leadInFork(const QByteArray &path) {
    FinderInfo info;
    struct stat item = {};
    if (lstat(path.constData(), &item) != 0 || !S_ISREG(item.st_mode) ||
        readFinderInfo(path, &info) != noErr || !(info.flags & kIsAlias))
        return std::nullopt;
    FSRef ref;
    OSStatus status = FSPathMakeRef(path, &ref);
    const auto fork = status == noErr ? ResourceFile::open(ref, fsRdPerm, &status) : nullptr;
    const auto record = fork ? fork->getFirstResource(kAliasResource) : std::nullopt;
    return record ? std::optional(Lead{*record, {}}) : std::nullopt;
}

std::optional<Lead> leadIn(const QByteArray &path) {
    auto lead = path.endsWith(kAliasFileSuffix) ? leadInDesktopEntry(path) : std::nullopt;
    return lead ? lead : leadInFork(path);
}

OSStatus follow(const Lead &lead, FSRef *target, const std::atomic<bool> *cancelled,
                int64_t searchedNames) {
    OSStatus status = mapReadErr;
    if (!lead.record.isEmpty())
        status = FSResolveAlias(lead.record, target, cancelled, searchedNames);
    if (status != mapReadErr)
        return status;
    const auto path = pathOfFileUrl(lead.url);
    if (path)
        return FSPathMakeRef(*path, target);
    return lead.url.isEmpty() ? mapReadErr : errFSOperationNotSupported;
}

bool isLink(const QByteArray &path) {
    struct stat item = {};
    return lstat(path.constData(), &item) == 0 && S_ISLNK(item.st_mode);
}

OSStatus followLink(const QByteArray &path, FSRef *target) {
    const QByteArray real = withoutLinks(path);
    return real.isEmpty() ? statusFromErrno(errno) : FSPathMakeRef(real, target);
}

bool isFolder(const QByteArray &path) {
    struct stat item = {};
    return stat(path.constData(), &item) == 0 && S_ISDIR(item.st_mode);
}

} // namespace

QByteArray aliasRecordInFile(const QByteArray &path) {
    const auto lead = leadIn(path);
    return lead ? lead->record : QByteArray();
}

OSStatus FSResolveAliasFile(FSRef *ref, bool resolveAliasChains, bool *targetIsFolder,
                            bool *wasAliased, const std::atomic<bool> *cancelled,
                            int64_t searchedNames) {
    FSRef at = *ref;
    int steps = 0;
    for (;; ++steps) {
        QByteArray path;
        OSStatus status = currentPath(at, &path);
        if (status != noErr)
            return status;
        const bool leads = resolveAliasChains || steps == 0;
        const auto lead = leads ? leadIn(path) : std::nullopt;
        if (!lead && !(steps > 0 && leads && isLink(path)))
            break;
        if (steps == kMostSteps)
            return errFSAliasLoop;
        status = lead ? follow(*lead, &at, cancelled, searchedNames) : followLink(path, &at);
        if (status != noErr)
            return status;
    }
    *wasAliased = steps > 0;
    *targetIsFolder = isFolder(at.path);
    *ref = at;
    return noErr;
}

} // namespace MWCore
