// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Custom icons of the user's desktop.
#include "platform/foundation/FileSystemText.h"
#include "platform/workspace/icons/DesktopIconLookup.h"
#include "platform/workspace/icons/EntryIcons.h"
#include "platform/workspace/icons/IconFiles.h"
#include "platform/workspace/icons/IconSources.h"

namespace MWCore {

void addDirectoryFileIcon(const IconItem &item, IconRef &icon) {
    const auto name = iconNameIn(item.folder.number(), ".directory");
    if (!name)
        return;
    constexpr QStringView kHere = u"./";
    const auto here = name->startsWith(kHere) ? fileSystemRepresentation(name->sliced(kHere.size()))
                                              : std::nullopt;
    if (!here)
        addNamedIcon(*name, item.path, icon);
    else if (const auto file = FolderFiles(item.path).find(*here))
        setFile(icon, *file);
}

void addLookedUpIcon(const IconItem &item, IconRef &icon) {
    const auto found = lookUpDesktopIcon(item.path);
    if (!found)
        return;
    setThemeName(icon, found->themeName);
    ResponsiveFiles files(item.status.isMountPoint ? QByteArray() : item.path);
    if (const auto file =
            found->file.startsWith('/') ? findIconFile(files, found->file) : std::nullopt)
        setFile(icon, *file);
}

} // namespace MWCore
