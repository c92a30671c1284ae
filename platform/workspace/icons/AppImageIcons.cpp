// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/posix/FolderStream.h"
#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/workspace/icons/CanonicalUri.h"
#include "platform/workspace/icons/EntryIcons.h"
#include "platform/workspace/icons/IconSources.h"
#include "platform/workspace/XdgFolders.h"

#include <fcntl.h>

namespace MWCore {
namespace {

/// The desktop entry that a program which integrates AppImages made for the one at @p path:
/// "appimagekit_DIGEST-NAME.desktop" in the user's applications. Empty if there is none.
QByteArray entryOf(const QByteArray &path) {
    const QByteArray data = userDataFolder();
    const QByteArray applications = pathIn(data, "applications");
    const QByteArray prefix = "appimagekit_" + uriDigest(canonicalUri(path)) + '-';
    const FolderStream listing(data.isEmpty() ? nullptr : opendir(applications.constData()));
    while (const dirent *const entry = listing ? readdir(listing.get()) : nullptr) {
        const QByteArray name = entry->d_name;
        if (name.startsWith(prefix) && name.endsWith(kDesktopEntrySuffix))
            return pathIn(applications, name);
    }
    return {};
}

} // namespace

void addAppImageIcon(const IconItem &item, IconRef &icon) {
    if (lowerExtensionOf(PathParts(item.path).name) != "appimage")
        return;
    const QByteArray entry = entryOf(item.path);
    if (const auto name = entry.isEmpty() ? std::nullopt : iconNameIn(AT_FDCWD, entry))
        addNamedIcon(*name, entry, icon);
}

} // namespace MWCore
