// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/AliasFollowing.h"
#include "platform/aliases/FileUrl.h"
#include "platform/files/PathParts.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/ShortMemo.h"
#include "platform/launch/ItemMimeType.h"
#include "platform/launch/ItemStatus.h"
#include "platform/launch/LaunchServices.h"
#include "platform/launch/MimeTypesByName.h"
#include "platform/launch/PackageExtensions.h"
#include "platform/metadata/MetadataStore.h"

#include <algorithm>
#include <iterator>

#include <QCoreApplication>
#include <QLocale>
#include <QMimeDatabase>

namespace MWCore {
namespace {

struct InodeRow {
    mode_t type;
    const char *mimeType;
};
constexpr InodeRow kInodeRows[] = {
    {S_IFLNK, "inode/symlink"},     {S_IFIFO, "inode/fifo"},       {S_IFSOCK, "inode/socket"},
    {S_IFBLK, "inode/blockdevice"}, {S_IFCHR, "inode/chardevice"},
};

QString commentOf(const QString &mimeType) {
    static auto *const memo =
        new ShortMemo<QString, QString>; // never freed: threads outlive main()
    return memo->value(QLocale().name() + u' ' + mimeType,
                       [&mimeType] { return QMimeDatabase().mimeTypeForName(mimeType).comment(); });
}

FinderInfo finderInfoOf(const QByteArray &path) {
    FinderInfo info;
    return readFinderInfo(path, &info) == noErr ? info : FinderInfo();
}

/// Whether the file is an alias of a local item; a link to a web page, for example, is not.
bool isAliasFile(const QByteArray &path) {
    const auto lead = aliasContentIn(path);
    return lead && (!lead->record.isEmpty() || pathOfFileUrl(lead->url));
}

QString kindOfPlainFile(const QByteArray &path) {
    return isAliasFile(path) ? QCoreApplication::translate("MWCore", "Alias")
                             : commentOf(mimeTypeOfFile(path));
}

/// The kind, by name, of a document that is a folder. The known extensions of packages are left
/// out, because in the database they stand for regular files.
QString kindOfPackage(const QByteArray &path) {
    const QByteArray name = PathParts(path).name;
    const QStringList byName = mimeTypesByName(stringWithFileSystemRepresentation(name));
    return byName.size() == 1 && !hasPackageExtension(name)
               ? commentOf(byName.front())
               : QCoreApplication::translate("MWCore", "Package");
}

/// Checks in the order in which an item's kind is decided.
QString kindOfFolder(const QByteArray &path) {
    LSItemInfoFlags flags;
    (void)LSCopyItemInfoForPath(path, finderInfoOf(path).flags, &flags);
    if (flags & kLSItemInfoIsApplication)
        return QCoreApplication::translate("MWCore", "Application");
    if (flags & kLSItemInfoIsPackage)
        return kindOfPackage(path);
    return commentOf(
        QString::fromLatin1(flags & kLSItemInfoIsVolume ? "inode/mount-point" : "inode/directory"));
}

} // namespace

QString LSCopyKindString(const QByteArray &path) {
    const ItemStatus item = itemStatus(path);
    if (S_ISREG(item.mode))
        return kindOfPlainFile(path);
    if (S_ISDIR(item.mode))
        return kindOfFolder(path);
    const auto *const row = std::ranges::find(kInodeRows, item.mode & S_IFMT, &InodeRow::type);
    return row == std::end(kInodeRows) ? QString() : commentOf(QString::fromLatin1(row->mimeType));
}

} // namespace MWCore
