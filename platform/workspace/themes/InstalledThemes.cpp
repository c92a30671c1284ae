// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/InstalledThemes.h"

#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/workspace/themes/IconTheme.h"
#include "platform/workspace/ResponsiveFiles.h"
#include "platform/workspace/XdgFolders.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>

namespace MWCore {
namespace {

/// Where a desktop stores the name of the theme.
struct SettingRow {
    const char *file; ///< in a folder of settings
    const char *group;
    const char *key;
};
constexpr SettingRow kSettingRows[] = {
    {"kdeglobals", "Icons", "Theme"},
    {"gtk-4.0/settings.ini", "Settings", "gtk-icon-theme-name"},
    {"gtk-3.0/settings.ini", "Settings", "gtk-icon-theme-name"},
};
constexpr int64_t kLongestSettings = 1'048'576; // bytes

constexpr const char *kUsualThemes[] = {"Adwaita", "breeze", "hicolor"};

QByteArray settingIn(const QByteArray &folder, const SettingRow &row) {
    const auto bytes = ResponsiveFiles().read(pathIn(folder, row.file), kLongestSettings);
    const auto value = bytes ? DesktopEntry(*bytes).value(row.group, row.key) : std::nullopt;
    return value ? fileSystemRepresentation(*value).value_or(QByteArray()) : QByteArray();
}

bool isInstalled(const QByteArray &theme, const std::vector<QByteArray> &baseFolders) {
    return installedThemeIndex(theme, baseFolders).has_value();
}

struct Current {
    std::mutex mutex;
    QString chosen;
    std::shared_ptr<const IconTheme> theme; ///< null until it is needed
};

Current &shared() {
    static Current current;
    return current;
}

} // namespace

std::optional<IconThemeIndex> installedThemeIndex(const QByteArray &name,
                                                  const std::vector<QByteArray> &baseFolders) {
    if (!isPlainName(name))
        return std::nullopt;
    ResponsiveFiles files;
    for (const QByteArray &folder : baseFolders)
        if (const auto bytes =
                files.read(pathIn(folder, name) + "/index.theme", IconThemeIndex::kLongest))
            return IconThemeIndex::parse(*bytes);
    return std::nullopt;
}

QByteArray usualThemeName(const std::vector<QByteArray> &baseFolders) {
    for (const QByteArray &folder : configFolders())
        for (const SettingRow &row : kSettingRows)
            if (QByteArray name = settingIn(folder, row); isInstalled(name, baseFolders))
                return name;
    const auto *const usual = std::ranges::find_if(
        kUsualThemes, [&baseFolders](const char *name) { return isInstalled(name, baseFolders); });
    return usual == std::end(kUsualThemes) ? kUsualThemes[std::size(kUsualThemes) - 1] : *usual;
}

std::shared_ptr<const IconTheme> IconTheme::current() {
    Current &current = shared();
    const std::scoped_lock lock(current.mutex);
    if (!current.theme) {
        const QString name = current.chosen.isEmpty()
                                 ? stringWithFileSystemRepresentation(usualThemeName(baseFolders()))
                                 : current.chosen;
        current.theme = std::make_shared<const IconTheme>(name);
    }
    return current.theme;
}

void IconTheme::setCurrentName(const QString &name) {
    Current &current = shared();
    const std::scoped_lock lock(current.mutex);
    current.chosen = name;
    current.theme.reset();
}

} // namespace MWCore
