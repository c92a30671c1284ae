// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/ApplicationFolder.h"

#include "core/posix/FolderStream.h"
#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntry.h"

#include <algorithm>
#include <iterator>
#include <set>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {
namespace {

constexpr std::size_t kMostEntries = 16; // that are tried; an AppDir has one

/// The first ones by name.
std::set<QByteArray> desktopEntryNames(const QByteArray &folder) {
    std::set<QByteArray> names;
    const FolderStream listing(opendir(folder.constData()));
    while (const dirent *const entry = listing ? readdir(listing.get()) : nullptr) {
        if (const QByteArray name = entry->d_name; name.endsWith(kDesktopEntrySuffix))
            names.insert(name);
        if (names.size() > kMostEntries)
            names.erase(std::prev(names.end()));
    }
    return names;
}

} // namespace

bool isRegularFile(const QByteArray &path) {
    struct stat item = {};
    return stat(path.constData(), &item) == 0 && S_ISREG(item.st_mode);
}

QByteArray appRunPath(const QByteArray &folder) {
    return folder + "/AppRun";
}

QByteArray describingEntry(const QByteArray &folder,
                           const std::function<bool(const QByteArray &name)> &isUsable) {
    const std::set<QByteArray> names = desktopEntryNames(folder);
    const auto found = std::ranges::find_if(names, isUsable);
    return found == names.end() ? QByteArray() : *found;
}

std::optional<QByteArray> appDirEntryPath(const QByteArray &folder) {
    if (!isRegularFile(appRunPath(folder)))
        return std::nullopt;
    const QByteArray name = describingEntry(
        folder, [&folder](const QByteArray &each) { return isRegularFile(pathIn(folder, each)); });
    return name.isEmpty() ? std::nullopt : std::optional(pathIn(folder, name));
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
