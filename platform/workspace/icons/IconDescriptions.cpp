// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconDescriptions.h"

#include <mutex>
#include <unordered_map>
#include <utility>

#include <QHashFunctions>

namespace MWCore {
namespace {

/// The descriptions of kinds by their hashes.
struct Known {
    static constexpr std::size_t kMost = 512; // a folder rarely has items of more than 50 kinds
    std::mutex mutex;
    std::unordered_map<std::size_t, std::shared_ptr<const IconRef>> descriptions;
};

} // namespace

bool isOfKind(const IconRef &icon) {
    return icon.customIconOf.isEmpty() && icon.file.isEmpty() && icon.thumbnailOf.isEmpty();
}

std::size_t hashOf(const IconRef &icon) {
    const QString name = icon.themeNames.isEmpty() ? QString() : icon.themeNames.front();
    return qHashMulti(0, icon.customIconOf, icon.file, icon.thumbnailOf, name, icon.drawing,
                      icon.version);
}

std::shared_ptr<const IconRef> sharedDescription(IconRef icon, std::size_t hash) {
    if (!isOfKind(icon))
        return std::make_shared<const IconRef>(std::move(icon));
    static auto *const known = new Known; // never freed: threads may outlive main()
    const std::scoped_lock lock(known->mutex);
    if (known->descriptions.size() >= Known::kMost)
        known->descriptions.clear();
    auto &description = known->descriptions[hash];
    if (!description || *description != icon)
        description = std::make_shared<const IconRef>(std::move(icon));
    return description;
}

} // namespace MWCore
