// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "IconOutput.h"

#include "Failure.h"
#include "IconSource.h"
#include "ItemPath.h"

#include <MWCore/FileCatalogue.h>
#include <MWCore/FileSystemText.h>

#include <sys/stat.h>

namespace MWCore::mwfile {

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
    struct stat item = {};
    const bool isThere = lstat(path.c_str(), &item) == 0;
    if (isThere && S_ISLNK(item.st_mode))
        throw Failure(path, "a link; name its target");
    if (isThere && !S_ISREG(item.st_mode))
        throw Failure(path, S_ISDIR(item.st_mode) ? "a folder" : "not a regular file");
    if (isThere && existing == Existing::Keep && item.st_size > 0 && !familyInFile(path))
        throw Failure(path, "not an icon family; only --force replaces it");
    OSStatus status = noErr;
    if (!family.writeToFile(pathText(path), &status))
        throw Failure(path, isThere && isLocked(path) ? "it is locked" : statusText(status));
}

} // namespace MWCore::mwfile
