// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/DesktopIconLookup.h"

#include "platform/launch/ItemStatus.h"
#include "platform/workspace/icons/IconFiles.h"
#include "platform/workspace/icons/IconSources.h"
#include "platform/workspace/ResponsiveFiles.h"

#include <memory>
#include <mutex>
#include <utility>

namespace MWCore {
namespace {

struct Current {
    std::mutex mutex;
    std::shared_ptr<const DesktopIconLookup> lookup;
};

Current &shared() {
    static auto *const current = new Current; // never freed: threads may outlive main()
    return *current;
}

std::shared_ptr<const DesktopIconLookup> currentLookup() {
    Current &current = shared();
    const std::scoped_lock lock(current.mutex);
    return current.lookup;
}

/// What can be used of an answer.
struct Usable {
    std::optional<IconFile> file;
    QString themeName;
};

/// A volume is not known to answer; any other item was just examined.
Usable lookUp(const QByteArray &item, const ItemStatus &status) {
    const auto lookup = currentLookup();
    const auto icon = lookup ? (*lookup)(item) : std::nullopt;
    if (!icon)
        return {};
    ResponsiveFiles files(status.isMountPoint ? QByteArray() : item);
    const bool isPath = icon->file.startsWith('/');
    return {isPath ? findIconFile(files, icon->file) : std::nullopt, icon->themeName};
}

} // namespace

void setDesktopIconLookup(DesktopIconLookup lookup) {
    Current &current = shared();
    auto next = lookup ? std::make_shared<const DesktopIconLookup>(std::move(lookup)) : nullptr;
    const std::scoped_lock lock(current.mutex);
    current.lookup.swap(next);
}

std::optional<DesktopIcon> lookUpDesktopIcon(const QByteArray &path) {
    const Usable found = lookUp(path, itemStatus(path));
    if (!found.file && found.themeName.isEmpty())
        return std::nullopt;
    return DesktopIcon{found.file ? found.file->path : QByteArray(), found.themeName};
}

void addLookedUpIcon(const IconItem &item, IconRef &icon) {
    const Usable found = lookUp(item.path, item.status);
    setThemeName(icon, found.themeName);
    if (found.file)
        setFile(icon, *found.file);
}

} // namespace MWCore
