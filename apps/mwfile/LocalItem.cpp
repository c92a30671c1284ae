// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "LocalItem.h"

#include "Failure.h"
#include "ItemPath.h"
#include "TextBytes.h"

#include <algorithm>

#include <sys/stat.h>

namespace MWCore::mwfile {
namespace {

bool exists(const std::string &path) {
    struct stat item = {};
    return stat(path.c_str(), &item) == 0;
}

struct NodeRow {
    MXNodeKind kind;
    char letter;
    const char *word;
};
constexpr NodeRow kNodeRows[] = {
    {MXNodeKind::Folder, 'd', nullptr},
    {MXNodeKind::File, '-', nullptr},
    {MXNodeKind::Link, 'l', nullptr},
    {MXNodeKind::Fifo, 'p', "fifo"},
    {MXNodeKind::Socket, 's', "socket"},
    {MXNodeKind::BlockDevice, 'b', "block device"},
    {MXNodeKind::CharacterDevice, 'c', "character device"},
    {MXNodeKind::Unknown, '?', nullptr},
};

const NodeRow &rowOf(MXNodeKind kind) {
    return *std::ranges::find(kNodeRows, kind, &NodeRow::kind);
}

} // namespace

MXFileSystemObject::Ptr listedFolder(const std::string &path) {
    const std::string absolute = absolutePath(path);
    const QString text = stringWithFileSystemRepresentation(absolute);
    OSStatus error = noErr;
    MXFileSystemObject::Ptr folder = MXFileSystemObject::newFSOForLocalPath(text, &error);
    if (!folder) {
        if (error != folderChangesErr && error != memFullErr && exists(path))
            throw Failure(path + ": its contents cannot be examined", error);
        throw Failure(path, error);
    }
    if (!folder->isDir())
        throw Failure(path, errFSNotAFolder);
    if (folder->contentsError() != noErr)
        throw Failure(path, folder->contentsError());
    return folder;
}

MXFileSystemObject::Ptr itemAtPath(const std::string &path) {
    const bool folderMeant = path.ends_with('/');
    const std::string absolute = folderMeant ? resolvedPath(path) : absolutePath(path);
    OSStatus error = noErr;
    auto item = MXFileSystemObject::newFSOForLocalItem(stringWithFileSystemRepresentation(absolute),
                                                       &error);
    if (!item)
        throw Failure(path, error);
    return item;
}

ItemWithContents itemWithContents(const std::string &path) {
    const MXFileSystemObject::Ptr item = itemAtPath(path);
    if (!item->isDir())
        return {item, noErr};
    constexpr bool kAssimilatesContents = false;
    OSStatus error = noErr;
    const auto listed =
        MXFileSystemObject::newFSOForLocalPath(item->completePath(), kAssimilatesContents, &error);
    if (listed)
        error = listed->contentsError();
    if (error == memFullErr)
        throw Failure(path, error);
    return {listed ? listed : item, error};
}

std::string nameInFolder(const MXFileSystemObject &item) {
    const QByteArray path = item.pathBytes();
    return path.sliced(path.lastIndexOf('/') + 1).toStdString();
}

char nodeLetter(MXNodeKind kind) {
    return rowOf(kind).letter;
}

const char *nodeWord(MXNodeKind kind) {
    return rowOf(kind).word;
}

bool isLinkOrAlias(const MXFileSystemObject &item) {
    return item.isSymbolicLink() || item.isAlias();
}

bool isTargetUnknown(const MXFileSystemObject &alias) {
    return alias.aliasOrLinkTargetKind() == MXItemKindUnknown;
}

std::optional<std::string> linkTarget(const MXFileSystemObject &link) {
    const QString target = link.resolvedLinkTarget();
    return target.isNull() ? std::nullopt : std::optional(bytesOf(target));
}

std::optional<std::string> finalTarget(const MXFileSystemObject &item) {
    if (!item.isAlias())
        return linkTarget(item);
    return isTargetUnknown(item) ? std::nullopt
                                 : std::optional(bytesOf(item.aliasOrLinkTargetPath()));
}

} // namespace MWCore::mwfile
