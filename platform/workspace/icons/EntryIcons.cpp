// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/EntryIcons.h"

#include "platform/files/RegularFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/workspace/icons/AliasIcons.h"
#include "platform/workspace/icons/IconFiles.h"
#include "platform/workspace/icons/IconNames.h"
#include "platform/workspace/icons/IconSources.h"

#include <fcntl.h>

namespace MWCore {
namespace {

/// Programs write a theme's icon like a file, which the standard does not provide for.
constexpr QStringView kSuffixes[] = {u".png", u".svg", u".xpm"};

QString withoutSuffix(const QString &name) {
    for (const QStringView suffix : kSuffixes)
        if (name.size() > suffix.size() && name.endsWith(suffix))
            return name.chopped(suffix.size());
    return name;
}

} // namespace

std::optional<QString> iconNameIn(int folder, const QByteArray &path) {
    OSStatus status = noErr;
    const Descriptor file = openRegularFileAt(folder, path, FinalLink::Keep, &status);
    const auto bytes =
        file ? readAt(file.number(), 0, kLongestDesktopEntry, &status) : std::nullopt;
    auto name = bytes ? DesktopEntry(*bytes).localizedValue(DesktopEntry::kMainGroup, "Icon")
                      : std::nullopt;
    return name && !name->isEmpty() ? std::move(name) : std::nullopt;
}

void addNamedIcon(const QString &name, const QByteArray &item, IconRef &icon) {
    if (!name.startsWith(u'/')) {
        setThemeName(icon, withoutSuffix(name));
        setThemeName(icon, name);
        return;
    }
    ResponsiveFiles files(item);
    const auto path = fileSystemRepresentation(name);
    if (const auto file = path ? findIconFile(files, *path) : std::nullopt)
        setFile(icon, *file);
}

void addDesktopEntryIcon(const IconItem &item, IconRef &icon) {
    if (!item.path.endsWith(kDesktopEntrySuffix))
        return;
    if (const auto name = iconNameIn(AT_FDCWD, item.path)) {
        icon = themeIcon("application-x-executable", kFileDrawing);
        addNamedIcon(*name, item.path, icon);
    } else {
        addTargetIcon(item, icon);
    }
}

} // namespace MWCore
