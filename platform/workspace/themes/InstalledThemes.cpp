// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/InstalledThemes.h"

#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/workspace/ResponsiveFiles.h"
#include "platform/workspace/XdgFolders.h"

#include <algorithm>
#include <iterator>

namespace MWCore {
namespace {

/// Where a desktop stores the name of the theme.
struct SettingRow {
    const char *folder; ///< in a folder of settings
    const char *file;
    const char *group;
    const char *key;
};
constexpr SettingRow kSettingRows[] = {
    {"", "kdeglobals", "Icons", "Theme"},
    {"gtk-4.0", "settings.ini", "Settings", "gtk-icon-theme-name"},
    {"gtk-3.0", "settings.ini", "Settings", "gtk-icon-theme-name"},
};
constexpr int64_t kLongestSettings = 1'048'576; // bytes

constexpr const char *kUsualThemes[] = {"Adwaita", "breeze", "hicolor"};

QByteArray folderOf(const QByteArray &settings, const SettingRow &row) {
    return *row.folder ? pathIn(settings, row.folder) : settings;
}

QByteArray settingIn(const QByteArray &folder, const SettingRow &row, ItemStamps &stamps) {
    ResponsiveFiles files;
    const QByteArray path = pathIn(folderOf(folder, row), row.file);
    stamps.add(path, files);
    const auto bytes = files.read(path, kLongestSettings);
    const auto value = bytes ? DesktopEntry(*bytes).value(row.group, row.key) : std::nullopt;
    return value ? fileSystemRepresentation(*value).value_or(QByteArray()) : QByteArray();
}

} // namespace

std::optional<IconThemeIndex> installedThemeIndex(const QByteArray &name,
                                                  const std::vector<QByteArray> &baseFolders,
                                                  ItemStamps *stamps) {
    if (!isPlainName(name))
        return std::nullopt;
    ResponsiveFiles files;
    std::optional<QByteArray> found;
    for (const QByteArray &base : baseFolders) {
        const QByteArray folder = pathIn(base, name);
        const QByteArray index = pathIn(folder, "index.theme");
        if (stamps)
            stamps->add(folder, files); // it may have files even if its index is not the first
        if (stamps && !found)
            stamps->add(index, files);
        if (!found)
            found = files.read(index, IconThemeIndex::kLongest);
    }
    return found ? std::optional(IconThemeIndex::parse(*found)) : std::nullopt;
}

QByteArray chosenThemeName(const QByteArray &name, const std::vector<QByteArray> &baseFolders,
                           ItemStamps &stamps) {
    const auto isInstalled = [&](const QByteArray &theme) {
        return installedThemeIndex(theme, baseFolders, &stamps).has_value();
    };
    if (isInstalled(name))
        return name;
    for (const QByteArray &folder : configFolders())
        for (const SettingRow &row : kSettingRows)
            if (QByteArray theme = settingIn(folder, row, stamps); isInstalled(theme))
                return theme;
    const auto *const usual = std::ranges::find_if(kUsualThemes, isInstalled);
    return usual == std::end(kUsualThemes) ? kUsualThemes[std::size(kUsualThemes) - 1] : *usual;
}

std::vector<QByteArray> themeSettingsFolders() {
    std::vector<QByteArray> folders;
    for (const QByteArray &settings : configFolders())
        for (const SettingRow &row : kSettingRows)
            folders.push_back(folderOf(settings, row));
    return folders;
}

} // namespace MWCore
