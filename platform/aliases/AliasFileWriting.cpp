// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/private/Descriptor.h"
#include "platform/aliases/Aliases.h"
#include "platform/aliases/AliasFileFormat.h"
#include "platform/aliases/FileUrl.h"
#include "platform/catalogue/ResourceFile.h"
#include "platform/files/PathParts.h"
#include "platform/files/ReplacedFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/AliasResolution.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {
namespace {

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
        entry.setValue(DesktopEntry::kMainGroup, kAliasRecordKey,
                       QString::fromLatin1(record.toBase64()));
    if (!isWhole || !path.endsWith(kAliasFileSuffix))
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

} // namespace MWCore
