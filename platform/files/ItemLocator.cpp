// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/ItemLocator.h"

#include "platform/files/DescriptorPath.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/files/TrustedFolder.h"
#include "platform/foundation/Log.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {

std::optional<ItemLocator> ItemLocator::find(const QByteArray &path, OSStatus *status) {
    const PathParts parts(path);
    const bool isParent = parts.name == "..";
    Descriptor folder = openTrustedFolder(isParent ? path : parts.parent, status);
    if (!folder)
        return std::nullopt;
    ItemLocator place(std::make_shared<const Descriptor>(std::move(folder)),
                      isParent || parts.name.isEmpty() ? "." : parts.name);
    if (faccessat(AT_FDCWD, place.sibling(".").path().constData(), F_OK, 0) != 0) {
        *status = errno == EACCES ? permErr : ioErr;
        if (*status == ioErr)
            qCWarning(mwcoreLog, "Nothing can be changed without /proc");
        return std::nullopt;
    }
    return place;
}

QByteArray ItemLocator::path() const {
    return pathOfDescriptor(folder()) + '/' + name_;
}

ItemLocator ItemLocator::sibling(const QByteArray &name) const {
    return {folder_, name};
}

OSStatus ItemLocator::examine(struct stat *item) const {
    return fstatat(folder(), name_.constData(), item, AT_SYMLINK_NOFOLLOW) == 0
               ? noErr
               : statusFromErrno(errno);
}

Descriptor ItemLocator::openFolder(OSStatus *status) const {
    return openFolderAt(folder(), ".", FinalLink::Keep, status);
}

} // namespace MWCore
