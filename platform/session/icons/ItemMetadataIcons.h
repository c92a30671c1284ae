// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/session/icons/CustomIconNames.h"

#include <MWCore/DesktopIconLookup.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

#include <QByteArray>

namespace MWCore {

/// To be called once before; for the thread of GIO, as it may wait for the session's bus.
void connectToMetadata();

/// The custom icon that the GVfs metadata has for the item at @p path: a file, which may not exist,
/// or a name; nullopt if it has none. May wait for the session's bus and for a service on it; for
/// the thread of GIO.
[[nodiscard]] std::optional<DesktopIcon> readMetadataIcon(const QByteArray &path);

/// The same without waiting, for thousands of items. Any thread.
class ItemMetadataIcons {
public:
    ItemMetadataIcons();

    /// Costs nanoseconds if no item of that name has an icon. Otherwise asks GIO, and waits for at
    /// most a quarter of a second; after that, nothing is asked and nothing found until GIO has
    /// answered. An icon that was just set may be found a second later.
    [[nodiscard]] std::optional<DesktopIcon> lookUp(const QByteArray &path);

private:
    [[nodiscard]] std::shared_ptr<const CustomIconNames> names();

    QByteArray folder_; ///< of the metadata
    QByteArray home_;
    std::mutex mutex_; ///< of what follows
    std::shared_ptr<const CustomIconNames> names_;
    int64_t nextCheck_ = 0; ///< nanoseconds of the monotonic clock
};

} // namespace MWCore
