// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/FileSystemText.h"
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

} // namespace MWCore
