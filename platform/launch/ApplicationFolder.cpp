// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/ApplicationFolder.h"

#include "core/posix/FolderStream.h"
#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntry.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {

bool isRegularFile(const QByteArray &path) {
    struct stat item = {};
    return stat(path.constData(), &item) == 0 && S_ISREG(item.st_mode);
}

QByteArray appRunPath(const QByteArray &folder) {
    return folder + "/AppRun";
}

std::optional<QByteArray> appDirEntryPath(const QByteArray &folder) {
    if (!isRegularFile(appRunPath(folder)))
        return std::nullopt;
    const FolderStream listing(opendir(folder.constData()));
    if (!listing)
        return std::nullopt;
    QByteArray first;
    while (const dirent *const entry = readdir(listing.get())) {
        const QByteArray name = entry->d_name;
        const bool isBetter =
            name.endsWith(kDesktopEntrySuffix) && (first.isEmpty() || name < first);
        if (isBetter && isRegularFile(pathIn(folder, name)))
            first = name;
    }
    return first.isEmpty() ? std::nullopt : std::optional(pathIn(folder, first));
}

bool isApplicationFolder(const QByteArray &folder) {
    if (lowerExtensionOf(PathParts(folder).name) == "app") {
        const QByteArray list = folder + "/Contents/Info.plist";
        if (isRegularFile(list) && faccessat(AT_FDCWD, list.constData(), R_OK, AT_EACCESS) == 0)
            return true;
    }
    return appDirEntryPath(folder).has_value();
}

} // namespace MWCore
