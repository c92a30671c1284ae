// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/DesktopIconLookup.h"

#include "platform/launch/ItemStatus.h"
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

/// A volume is not known to answer; any other item was just examined.
std::optional<DesktopIcon> withUsableFile(std::optional<DesktopIcon> icon, const QByteArray &item) {
    if (icon && !icon->file.isEmpty()) {
        const bool isVolume = itemStatus(item).isMountPoint;
        icon->file = ResponsiveFiles(isVolume ? QByteArray() : item).regularFile(icon->file);
    }
    return icon && icon->file.isEmpty() && icon->themeName.isEmpty() ? std::nullopt : icon;
}

} // namespace

void setDesktopIconLookup(DesktopIconLookup lookup) {
    Current &current = shared();
    auto next = lookup ? std::make_shared<const DesktopIconLookup>(std::move(lookup)) : nullptr;
    const std::scoped_lock lock(current.mutex);
    current.lookup.swap(next);
}

std::optional<DesktopIcon> lookUpDesktopIcon(const QByteArray &path) {
    Current &current = shared();
    std::shared_ptr<const DesktopIconLookup> lookup;
    {
        const std::scoped_lock lock(current.mutex);
        lookup = current.lookup;
    }
    return lookup ? withUsableFile((*lookup)(path), path) : std::nullopt;
}

} // namespace MWCore
