// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/ReferencePlace.h"

#include "platform/files/ItemIdentity.h"
#include "platform/files/PathParts.h"
#include "platform/references/AliasResolution.h"

#include <linux/magic.h>
#include <sys/vfs.h>

namespace MWCore {
namespace {

/// On FUSE even inode numbers may go with the kernel's cache; there the place decides.
bool isOnFuse(const ItemPlace &place) {
    struct statfs system = {};
    return statfs(place.path().constData(), &system) == 0 && system.f_type == FUSE_SUPER_MAGIC;
}

/// Whether the item of @p ref is at @p place: between finding a path and opening its folder another
/// may have come there.
bool holds(const ItemPlace &place, const FSRef &ref, OSStatus *status) {
    const auto found = identityOf(place.folder(), place.name().constData(), status);
    if (!found)
        return false;
    const bool isIt = isSameItem(*found, ref.identity) ||
                      (found->device == ref.identity.device && isOnFuse(place));
    *status = isIt ? noErr : fnfErr;
    return isIt;
}

/// Where the item of @p ref is. A search for it must not lead from another's link to where the
/// link led once.
OSStatus pathToChange(const FSRef &ref, QByteArray *path) {
    return ref.isBehindForeignLink ? foreignLinkErr : currentPath(ref, path);
}

} // namespace

std::optional<ItemPlace> placeOf(const FSRef &ref, OSStatus *status) {
    QByteArray path;
    *status = pathToChange(ref, &path);
    const auto place = *status == noErr ? ItemPlace::find(path, status) : std::nullopt;
    return place && holds(*place, ref, status) ? place : std::nullopt;
}

std::optional<ItemPlace> placeIn(const FSRef &folder, const QByteArray &name, OSStatus *status) {
    QByteArray path;
    *status = pathToChange(folder, &path);
    const auto place =
        *status == noErr ? ItemPlace::find(pathIn(path, name), status) : std::nullopt;
    return place && holds(place->sibling("."), folder, status) ? place : std::nullopt;
}

} // namespace MWCore
