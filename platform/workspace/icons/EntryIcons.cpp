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

std::optional<DesktopEntry> entryAt(int folder, const QByteArray &path) {
    OSStatus status = noErr;
    const Descriptor file = openRegularFileAt(folder, path, FinalLink::Keep, &status);
    const auto bytes =
        file ? readAt(file.number(), 0, kLongestDesktopEntry, &status) : std::nullopt;
    return bytes ? std::optional(DesktopEntry(*bytes)) : std::nullopt;
}

std::optional<QString> iconNameOf(const DesktopEntry &entry) {
    auto name = entry.localizedValue(DesktopEntry::kMainGroup, "Icon");
    return name && !name->isEmpty() ? std::move(name) : std::nullopt;
}

} // namespace

std::optional<QString> iconNameIn(int folder, const QByteArray &path) {
    const auto entry = entryAt(folder, path);
    return entry ? iconNameOf(*entry) : std::nullopt;
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
    const auto entry =
        item.path.endsWith(kDesktopEntrySuffix) ? entryAt(AT_FDCWD, item.path) : std::nullopt;
    if (!entry)
        return;
    if (const auto name = iconNameOf(*entry)) {
        icon = themeIcon("application-x-executable", kFileDrawing);
        addNamedIcon(*name, item.path, icon);
    } else if (entry->value(DesktopEntry::kMainGroup, "Type") == u"Application") {
        icon.themeNames = QStringList{"application-x-desktop", "application-x-executable"};
    } else {
        addTargetIcon(item, icon);
    }
}

} // namespace MWCore
