// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/icons/ItemPlaces.h"

#include "platform/files/PathParts.h"

namespace MWCore {

std::optional<RemoteMount> ItemPlaces::remoteMountOf(const QByteArray &path) {
    const PathParts parts(path);
    enter(parts.parent);
    const Mount *const mount = mountOf(pathIn(realFolder_, parts.name), mounts_.mounts());
    if (mount && !guard_.mayTouch(*mount))
        return mount->id;
    return isOutOfReach_ ? std::optional<RemoteMount>(0) : std::nullopt;
}

/// The items of a view are mostly in one folder.
void ItemPlaces::enter(const QByteArray &folder) {
    if (folder_ == folder)
        return;
    OSStatus status = noErr;
    QByteArray real;
    const Descriptor found = guard_.open(folder, FinalLink::Follow, &status, &real);
    isOutOfReach_ = status == fileBoundsErr;
    realFolder_ = found || isOutOfReach_ ? real : folder;
    folder_ = folder;
}

} // namespace MWCore
