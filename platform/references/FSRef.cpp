// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/FSRef.h"

#include "platform/references/AliasResolution.h"

#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace MWCore {
namespace {

QByteArray absolute(const QByteArray &path) {
    if (path.startsWith('/'))
        return path;
    const std::unique_ptr<char, decltype(&std::free)> folder(getcwd(nullptr, 0), &std::free);
    const QByteArray current = folder ? folder.get() : ".";
    return current.endsWith('/') ? current + path : current + '/' + path;
}

bool isUnchanged(const FSRef &ref) {
    OSStatus status = noErr;
    const auto identity = identityOf(AT_FDCWD, ref.path.constData(), &status);
    return identity && isSameItem(*identity, ref.identity);
}

} // namespace

OSStatus FSPathMakeRef(const QByteArray &path, FSRef *ref) {
    if (path.isEmpty())
        return bdNamErr;
    OSStatus status = noErr;
    const QByteArray from = absolute(path);
    if (auto identity = identityOf(AT_FDCWD, from.constData(), &status))
        *ref = {from, std::move(*identity)};
    return status;
}

OSStatus FSRefMakePath(const FSRef &ref, QByteArray *path) {
    OSStatus status = noErr;
    if (isUnchanged(ref)) {
        *path = ref.path;
    } else {
        AliasRecord record;
        record.path = ref.path;
        record.realPath = ref.path;
        record.identity = ref.identity;
        const auto found = locate(record, Replacement::IsAnother, {}, &status);
        if (!found)
            return status;
        *path = *found;
    }
    return path->size() <= kLongestReferencePath ? noErr : fileBoundsErr;
}

} // namespace MWCore
