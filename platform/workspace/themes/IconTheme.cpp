// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/IconTheme.h"

#include "platform/files/PathParts.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/workspace/themes/IconThemeFiles.h"
#include "platform/workspace/themes/InstalledThemes.h"
#include "platform/workspace/themes/ItemStamps.h"
#include "platform/workspace/XdgFolders.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <mutex>
#include <utility>

namespace MWCore {
namespace {

constexpr const char *kLastTheme = "hicolor";
constexpr std::size_t kMostThemes = 64; ///< that are searched for one icon

std::vector<QByteArray> plainNames(const QStringList &icons) {
    std::vector<QByteArray> names;
    for (const QString &icon : icons)
        if (const auto name = fileSystemRepresentation(icon); name && isPlainName(*name))
            names.push_back(*name);
    return names;
}

} // namespace

/// The themes in the order in which they are searched.
class IconTheme::Files {
public:
    explicit Files(std::vector<QByteArray> folders)
        : folders_(std::move(folders)), unthemed_(IconThemeFiles::unthemed(folders_)) {}

    std::optional<QByteArray> find(const QString &theme, const std::vector<QByteArray> &icons,
                                   int size, int scale) {
        findThemesOnce(theme);
        const auto findIn = [&](IconThemeFiles &files) {
            std::optional<QByteArray> path;
            for (auto icon = icons.begin(); !path && icon != icons.end(); ++icon)
                path = files.find(*icon, size, scale);
            return path;
        };
        std::optional<QByteArray> path;
        for (auto files = themes_.begin(); !path && files != themes_.end(); ++files)
            path = findIn(**files);
        return path ? path : findIn(unthemed_);
    }

    /// The base folders and those of the themes.
    [[nodiscard]] std::vector<QByteArray> folders(const QString &theme) {
        findThemesOnce(theme);
        std::vector<QByteArray> all = folders_;
        for (const auto &files : themes_)
            all.insert(all.end(), files->themeFolders().begin(), files->themeFolders().end());
        return all;
    }

    [[nodiscard]] bool haveChanged() const {
        const auto hasChanged = [](const auto &files) { return files->haveChanged(); };
        return areThemesKnown_.load(std::memory_order_acquire) &&
               (stamps_.haveChanged() || unthemed_.haveChanged() ||
                std::ranges::any_of(themes_, hasChanged));
    }

private:
    void findThemesOnce(const QString &theme) {
        std::call_once(themesFound_, [this, &theme] { findThemes(theme); });
    }

    void findThemes(const QString &theme) {
        ResponsiveFiles files;
        for (const QByteArray &folder : folders_)
            stamps_.add(folder, files);
        std::vector<QByteArray> known = {kLastTheme};
        addWithParents(fileSystemRepresentation(theme).value_or(QByteArray()), known);
        add(kLastTheme);
        areThemesKnown_.store(true, std::memory_order_release);
    }

    /// Depth first, as the standard has it; each theme once.
    void addWithParents(const QByteArray &theme, std::vector<QByteArray> &known) {
        if (std::ranges::find(known, theme) != known.end() || known.size() >= kMostThemes)
            return;
        known.push_back(theme);
        for (const QByteArray &parent : add(theme))
            addWithParents(parent, known);
    }

    /// Returns the names of the theme's parents.
    std::vector<QByteArray> add(const QByteArray &theme) {
        auto index = installedThemeIndex(theme, folders_, &stamps_);
        if (!index)
            return {};
        std::vector<QByteArray> themeFolders;
        for (const QByteArray &folder : folders_)
            themeFolders.push_back(pathIn(folder, theme));
        themes_.push_back(
            std::make_unique<IconThemeFiles>(std::move(themeFolders), std::move(index->folders)));
        return std::move(index->parents);
    }

    std::vector<QByteArray> folders_;
    std::once_flag themesFound_;
    ItemStamps stamps_;
    std::vector<std::unique_ptr<IconThemeFiles>> themes_;
    IconThemeFiles unthemed_;
    std::atomic<bool> areThemesKnown_ = false; ///< set after everything above
};

IconTheme::IconTheme(QString name, std::vector<QByteArray> folders)
    : name_(std::move(name)), files_(std::make_unique<Files>(std::move(folders))) {}

IconTheme::~IconTheme() = default;

std::optional<QByteArray> IconTheme::find(const QStringList &icons, int size, int scale) const {
    return files_->find(name_, plainNames(icons), size, scale);
}

bool IconTheme::hasChanged() const {
    return files_->haveChanged();
}

QStringList IconTheme::watchedFolders() {
    const auto theme = current();
    std::vector<QByteArray> folders = themeSettingsFolders();
    std::ranges::copy(theme->files_->folders(theme->name_), std::back_inserter(folders));
    ResponsiveFiles files;
    QStringList existing;
    for (const QByteArray &folder : folders)
        if (files.open(folder))
            existing += stringWithFileSystemRepresentation(folder);
    existing.removeDuplicates();
    return existing;
}

std::vector<QByteArray> IconTheme::baseFolders() {
    std::vector<QByteArray> folders;
    if (const QByteArray home = homeFolder(); !home.isEmpty())
        folders.push_back(pathIn(home, ".icons"));
    for (const QByteArray &folder : dataFolders())
        folders.push_back(pathIn(folder, "icons"));
    folders.emplace_back("/usr/share/pixmaps");
    return folders;
}

} // namespace MWCore
