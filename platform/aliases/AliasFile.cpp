// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/private/Descriptor.h"
#include "platform/aliases/Aliases.h"
#include "platform/aliases/FileUrl.h"
#include "platform/catalogue/ResourceFile.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/files/ReplacedFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/AliasResolution.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {
namespace {

constexpr QByteArrayView kSuffix = ".desktop";
constexpr QByteArrayView kRecordKey = "X-MWCore-Alias"; ///< the record in base64
constexpr int64_t kLongestEntry = 1 << 20;
constexpr uint32_t kAliasResource = 0x616C6973;    // 'alis'
constexpr uint32_t kAliasFileType = 0x616C6973;    // 'alis'
constexpr uint32_t kAliasFileCreator = 0x4D414353; // 'MACS'
constexpr int kMostSteps = 40;                     // as the kernel follows links

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
    return Lead{QByteArray::fromBase64(text(kRecordKey)), text("URL")};
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
    auto lead = path.endsWith(kSuffix) ? leadInDesktopEntry(path) : std::nullopt;
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

OSStatus writeDesktopEntry(const QByteArray &target, const QByteArray &record,
                           const QByteArray &path) {
    DesktopEntry entry;
    // For people; what is not UTF-8 would make the whole entry invalid.
    const QByteArray last = PathParts(target).name;
    const QString name = last.isEmpty() ? "/" : QString::fromUtf8(last);
    const bool isWhole =
        entry.setValue(DesktopEntry::kMainGroup, "Type", "Link") &&
        entry.setValue(DesktopEntry::kMainGroup, "Name", name) &&
        entry.setValue(DesktopEntry::kMainGroup, "URL", QString::fromLatin1(fileUrl(target))) &&
        entry.setValue(DesktopEntry::kMainGroup, kRecordKey,
                       QString::fromLatin1(record.toBase64()));
    if (!isWhole || !path.endsWith(kSuffix))
        return bdNamErr;
    OSStatus status = noErr;
    constexpr mode_t kReadAndWrite = 0666;
    auto file = ReplacedFile::begin(path, {kReadAndWrite}, &status);
    return file ? file->commitNew(entry.toBytes()) : status;
}

/// Makes the item @p file, which has a fork without resources, an alias.
OSStatus fillFinderAlias(const FSRef &file, const QByteArray &record) {
    OSStatus status = noErr;
    const auto fork = ResourceFile::open(file, fsRdWrPerm, &status);
    if (fork)
        status = fork->addResource(kAliasResource, 0, {}, record);
    if (status == noErr)
        status = fork->close();
    FinderInfo info;
    info.type = kAliasFileType;
    info.creator = kAliasFileCreator;
    info.flags = kIsAlias;
    return status == noErr ? writeFinderInfo(file.path, info) : status;
}

/// All of it or nothing: an empty file without its metadata would lead nowhere and be in the way.
OSStatus writeFinderAlias(const QByteArray &record, const QByteArray &path) {
    const PathParts parts(path);
    constexpr mode_t kReadAndWrite = 0666;
    if (!Descriptor(open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kReadAndWrite)))
        return statusFromErrno(errno);
    FSRef folder;
    FSRef file;
    OSStatus status = FSPathMakeRef(parts.parent, &folder);
    if (status == noErr)
        status = FSCreateResFile(folder, parts.name, &file);
    const bool hasFork = status == noErr;
    if (hasFork)
        status = fillFinderAlias(file, record);
    if (status != noErr && hasFork)
        (void)writeResourceFork(path, {});
    if (status != noErr)
        unlink(path.constData());
    return status;
}

} // namespace

OSStatus FSCreateAliasFile(const FSRef &target, const QByteArray &path, AliasFileForm form) {
    struct stat item = {};
    if (lstat(path.constData(), &item) == 0)
        return dupFNErr;
    FSRef now;
    QByteArray targetPath;
    QByteArray record;
    OSStatus status = currentPath(target, &targetPath);
    if (status == noErr)
        status = FSPathMakeRef(targetPath, &now);
    if (status == noErr)
        status = FSNewAlias(now, &record);
    if (status != noErr)
        return status;
    return form == AliasFileForm::Finder ? writeFinderAlias(record, path)
                                         : writeDesktopEntry(now.path, record, path);
}

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
