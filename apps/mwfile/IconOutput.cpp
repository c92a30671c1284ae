// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "IconOutput.h"

#include "Failure.h"
#include "IconSource.h"
#include "ItemPath.h"

#include <MWCore/FileCatalogue.h>
#include <MWCore/FileSystemText.h>

#include <optional>

#include <sys/stat.h>

namespace MWCore::mwfile {
namespace {

/// The regular file at @p path; nullopt if nothing is there. Throws Failure if it is anything else.
std::optional<struct stat> replaceableFile(const std::string &path) {
    struct stat item = {};
    if (lstat(path.c_str(), &item) != 0)
        return std::nullopt;
    if (S_ISLNK(item.st_mode))
        throw Failure(path, "a link; name its target");
    if (!S_ISREG(item.st_mode))
        throw Failure(path, S_ISDIR(item.st_mode) ? "a folder" : "not a regular file");
    return item;
}

} // namespace

bool isLocked(const std::string &path) {
    FSCatalogInfo info;
    return FSGetCatalogInfoForPath(QByteArray::fromStdString(path), kFSCatInfoNodeFlags, &info) ==
               noErr &&
           info.nodeFlags.testFlag(kFSNodeLockedMask);
}

QString pathText(const std::string &path) {
    return stringWithFileSystemRepresentation(absolutePath(path));
}

void writeFamily(const IconFamily &family, const std::string &path, Existing existing) {
    const auto file = replaceableFile(path);
    if (file && existing == Existing::Keep && file->st_size > 0 && !familyInFile(path))
        throw Failure(path, "not an icon family; only --force replaces it");
    OSStatus status = noErr;
    if (!family.writeToFile(pathText(path), &status))
        throw Failure(path, file && isLocked(path) ? "it is locked" : statusText(status));
}

void writePng(const QByteArray &png, const std::string &path, Existing existing) {
    const auto file = replaceableFile(path);
    if (file && existing == Existing::Keep && file->st_size > 0)
        throw Failure(path, "exists; --force replaces it");
    if (file && isLocked(path))
        throw Failure(path, "it is locked");
    const std::string name = path.substr(path.rfind('/') + 1);
    const Existing inTheWay = file ? Existing::Replace : Existing::Keep;
    OutputFolder::containing(path).write(name, png, inTheWay);
}

} // namespace MWCore::mwfile
