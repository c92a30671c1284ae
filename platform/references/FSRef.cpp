// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/FSRef.h"

#include "platform/files/ItemIdentity.h"
#include "platform/files/PathParts.h"
#include "platform/files/TrustedFolder.h"
#include "platform/references/AliasResolution.h"

#include <fcntl.h>

namespace MWCore {
namespace {

/// Replaces a "." or ".." at the end of @p path by the folder's own name, which sidecars and people
/// need.
QByteArray named(const QByteArray &path) {
    if (!isDots(PathParts(path).name))
        return path;
    const QByteArray real = withoutLinks(path);
    return real.isEmpty() ? path : real;
}

/// The identity of the item at @p path; foreignLinkErr in @p status if the path contains a link
/// that another user could have made.
std::optional<FileIdentity> identityOnTrustedPath(const QByteArray &path, OSStatus *status) {
    const PathParts parts(path);
    const bool isFolder = path.endsWith('/') || isDots(parts.name);
    const Descriptor folder = openTrustedFolder(isFolder ? path : parts.parent, status);
    return folder ? identityOf(folder.number(), isFolder ? "." : parts.name.constData(), status)
                  : std::nullopt;
}

/// Whether an item that could not be examined may be somewhere else. Not if the system ran out of a
/// resource or failed to read.
bool mayHaveMoved(OSStatus status) {
    return status != tmfoErr && status != memFullErr && status != ioErr && status != unreachableErr;
}

} // namespace

OSStatus FSPathMakeRef(const QByteArray &path, FSRef *ref) {
    if (path.isEmpty())
        return bdNamErr;
    OSStatus status = noErr;
    const QByteArray given = absolutePath(path);
    const QByteArray from = named(given);
    auto identity = identityOnTrustedPath(given, &status);
    const bool isBehindForeignLink = status == foreignLinkErr;
    if (isBehindForeignLink)
        identity = identityOf(AT_FDCWD, from.constData(), &status);
    if (identity)
        *ref = {from, std::move(*identity), isBehindForeignLink};
    return status;
}

OSStatus currentPath(const FSRef &ref, QByteArray *path) {
    MountSnapshot mounts;
    ResolutionContext context({}, mounts);
    return currentPath(ref, context, path);
}

OSStatus currentPath(const FSRef &ref, ResolutionContext &context, QByteArray *path) {
    OSStatus status = noErr;
    const auto identity = identityOf(AT_FDCWD, ref.path.constData(), &status);
    if (identity && isSameItemAt(ref.path, *identity, ref.identity)) {
        *path = ref.path;
        return noErr;
    }
    if (!identity && !mayHaveMoved(status))
        return status;
    if (const auto found = locate(recordOf(ref), Replacement::Reject, context, &status))
        *path = found->path;
    return status;
}

OSStatus FSRefMakePath(const FSRef &ref, QByteArray *path) {
    const OSStatus status = currentPath(ref, path);
    return status == noErr && path->size() > kLongestReferencePath ? fileBoundsErr : status;
}

} // namespace MWCore
