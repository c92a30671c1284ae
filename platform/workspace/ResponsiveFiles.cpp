// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/ResponsiveFiles.h"

#include "platform/aliases/AliasFollowing.h"
#include "platform/files/DescriptorPath.h"
#include "platform/files/RegularFile.h"
#include "platform/workspace/XdgFolders.h"

#include <sys/stat.h>

namespace MWCore {

/// Allows the mounts that need not be local, which few paths lead to. False if that was done
/// before.
bool ResponsiveFiles::allowMore() {
    if (std::exchange(isMoreAllowed_, true))
        return false;
    for (const QByteArray &path : {homeFolder(), item_})
        if (const auto mount = path.isEmpty() ? std::nullopt : mountAt(path))
            guard_.allow(*mount);
    return true;
}

Descriptor ResponsiveFiles::open(const QByteArray &path, QByteArray *realPath) {
    OSStatus status = noErr;
    Descriptor item = guard_.open(path, FinalLink::Follow, &status, realPath);
    if (status == fileBoundsErr && allowMore())
        item = guard_.open(path, FinalLink::Follow, &status, realPath);
    return item;
}

QByteArray ResponsiveFiles::regularFile(const QByteArray &path) {
    QByteArray real;
    const Descriptor found = open(path, &real);
    struct stat item = {};
    const bool isRegular = found && fstat(found.number(), &item) == 0 && S_ISREG(item.st_mode);
    return isRegular ? real : QByteArray();
}

std::optional<QByteArray> ResponsiveFiles::read(const QByteArray &path, int64_t limit) {
    const Descriptor found = open(path);
    OSStatus status = noErr;
    return found ? readRegularFile(pathOfDescriptor(found.number()), limit, FinalLink::Follow,
                                   &status)
                 : std::nullopt;
}

} // namespace MWCore
