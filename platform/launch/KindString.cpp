// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/launch/ApplicationFolder.h"
#include "platform/launch/ItemStatus.h"
#include "platform/launch/LaunchServices.h"

#include <algorithm>
#include <iterator>

#include <QCoreApplication>
#include <QMimeDatabase>

namespace MWCore {
namespace {

struct InodeRow {
    mode_t type;
    const char *mimeType;
};
constexpr InodeRow kInodeRows[] = {
    {S_IFDIR, "inode/directory"}, {S_IFLNK, "inode/symlink"},     {S_IFIFO, "inode/fifo"},
    {S_IFSOCK, "inode/socket"},   {S_IFBLK, "inode/blockdevice"}, {S_IFCHR, "inode/chardevice"},
};

QString commentOf(const char *mimeType) {
    return QMimeDatabase().mimeTypeForName(QLatin1String(mimeType)).comment();
}

/// What the file begins with; nothing when it cannot be read.
std::optional<QByteArray> startOf(const QByteArray &path) {
    constexpr int64_t kEnough = 16'384; // the database's magic looks no farther
    OSStatus status = noErr;
    const Descriptor file = openRegularFile(path, Links::Keep, &status);
    return file ? readAt(file.number(), 0, kEnough, &status) : std::nullopt;
}

/// Never the database's own look at the file: it would open it by a name that may have no bytes in
/// the local encoding.
QString kindOfPlainFile(const QByteArray &path) {
    const QMimeDatabase database;
    const QString name = stringWithFileSystemRepresentation(PathParts(path).name);
    const auto byName = database.mimeTypesForFileName(name);
    if (byName.size() == 1)
        return byName.front().comment();
    if (const auto start = startOf(path))
        return database.mimeTypeForFileNameAndData(name, *start).comment();
    return byName.isEmpty() ? commentOf("application/octet-stream") : byName.front().comment();
}

} // namespace

QString LSCopyKindString(const QByteArray &path) {
    const ItemStatus item = itemStatus(path);
    if (S_ISREG(item.mode))
        return kindOfPlainFile(path);
    if (S_ISDIR(item.mode) && isApplicationFolder(path))
        return QCoreApplication::translate("MWCore", "Application");
    if (item.isMountPoint)
        return commentOf("inode/mount-point");
    const auto *const row = std::ranges::find(kInodeRows, item.mode & S_IFMT, &InodeRow::type);
    return row == std::end(kInodeRows) ? QString() : commentOf(row->mimeType);
}

} // namespace MWCore
