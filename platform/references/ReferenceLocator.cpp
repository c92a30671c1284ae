// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/ReferenceLocator.h"

#include "platform/files/ItemIdentity.h"
#include "platform/files/PathParts.h"
#include "platform/references/AliasResolution.h"

namespace MWCore {
namespace {

/// Whether the item of @p ref is at @p place. Another item may have taken the path before its
/// folder was opened.
bool holds(const ItemLocator &place, const FSRef &ref, OSStatus *status) {
    const auto found = identityOf(place.folder(), place.name().constData(), status);
    if (!found)
        return false;
    const bool isSame = isSameItemAt(place.path(), *found, ref.identity);
    *status = isSame ? noErr : fnfErr;
    return isSame;
}

/// The path at which to change the item of @p ref. Refuses an item behind another user's link,
/// because a search would find the place to which the link once led.
OSStatus pathToChange(const FSRef &ref, QByteArray *path) {
    return ref.isBehindForeignLink ? foreignLinkErr : currentPath(ref, path);
}

} // namespace

std::optional<ItemLocator> locatorOf(const FSRef &ref, OSStatus *status) {
    QByteArray path;
    *status = pathToChange(ref, &path);
    const auto place = *status == noErr ? ItemLocator::find(path, status) : std::nullopt;
    return place && holds(*place, ref, status) ? place : std::nullopt;
}

std::optional<ItemLocator> locatorIn(const FSRef &folder, const QByteArray &name,
                                     OSStatus *status) {
    QByteArray path;
    *status = pathToChange(folder, &path);
    const auto place =
        *status == noErr ? ItemLocator::find(pathIn(path, name), status) : std::nullopt;
    return place && holds(place->sibling("."), folder, status) ? place : std::nullopt;
}

} // namespace MWCore
