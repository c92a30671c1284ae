// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/ApplicationIcons.h"

#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/launch/ApplicationFolder.h"
#include "platform/launch/Bundle.h"
#include "platform/workspace/icons/IconNames.h"
#include "platform/workspace/ResponsiveFiles.h"
#include "platform/workspace/themes/IconThemeIndex.h"

#include <initializer_list>

namespace MWCore {
namespace {

IconRef executableIcon() {
    return themeIcon("application-x-executable", kFileDrawing);
}

/// The first of @p names that is a regular file in @p folder, and not through a link outside it.
QByteArray firstInside(const QByteArray &folder, std::initializer_list<QByteArray> names) {
    ResponsiveFiles files(folder);
    QByteArray realFolder;
    if (!files.open(folder, &realFolder))
        return {};
    for (const QByteArray &name : names)
        if (QByteArray file = files.regularFile(pathIn(realFolder, name));
            !file.isEmpty() && isAtOrBelow(file, realFolder))
            return file;
    return {};
}

void addThemeName(IconRef &icon, const QByteArray &name) {
    icon.themeNames.prepend(stringWithFileSystemRepresentation(name));
}

} // namespace

std::optional<IconRef> applicationFolderIcon(const QByteArray &folder) {
    const auto bundle = isApplicationFolder(folder) ? Bundle::open(folder) : std::nullopt;
    if (!bundle || !bundle->isApplication())
        return std::nullopt;
    IconRef icon = executableIcon();
    const auto name = fileSystemRepresentation(bundle->value("CFBundleIconFile").toString());
    const bool isNamed = name && isPlainName(*name);
    const bool isAppDir = appDirEntryPath(folder).has_value();
    if (!isAppDir && isNamed)
        icon.file = firstInside(
            folder, {"Contents/Resources/" + *name + ".icns", "Contents/Resources/" + *name});
    if (isAppDir && isNamed) {
        icon.file = firstInside(folder, {*name + ".svg", *name + ".png", ".DirIcon"});
        addThemeName(icon, *name);
    }
    return icon;
}

std::optional<IconRef> desktopEntryIcon(const QByteArray &path) {
    OSStatus status = noErr;
    const auto bytes = readStartOf(path, kLongestDesktopEntry, FinalLink::Keep, &status);
    const auto value = bytes ? DesktopEntry(*bytes).localizedValue(DesktopEntry::kMainGroup, "Icon")
                             : std::nullopt;
    const auto name = value ? fileSystemRepresentation(*value) : std::nullopt;
    if (!name || name->isEmpty())
        return std::nullopt;
    IconRef icon = executableIcon();
    if (name->startsWith('/'))
        icon.file = ResponsiveFiles(path).regularFile(*name);
    else if (isPlainName(*name))
        addThemeName(icon, *name);
    return icon;
}

} // namespace MWCore
