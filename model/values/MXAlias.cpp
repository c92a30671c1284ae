// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXAlias.h"

#include "platform/aliases/Aliases.h"
#include "platform/foundation/FileSystemText.h"

#include <sys/stat.h>

namespace MWCore {

MXAlias::Ptr MXAlias::initWithPath(const QString &path) {
    const auto bytes = fileSystemRepresentation(path);
    struct stat item = {};
    if (!bytes || stat(bytes->constData(), &item) != 0)
        return {};
    const auto target = _fsRefForPath(path);
    QByteArray alias;
    if (!target || FSNewAlias(*target, &alias) != noErr)
        return {};
    return Ptr(new MXAlias(alias));
}

MXAlias::Ptr MXAlias::initWithData(const QByteArray &data) {
    return data.isNull() ? Ptr() : Ptr(new MXAlias(data));
}

QString MXAlias::path(const std::atomic<bool> *cancelled) const {
    FSRef target;
    QByteArray path;
    if (FSResolveAlias(alias_, &target, cancelled) != noErr ||
        FSRefMakePath(target, &path) != noErr)
        return {};
    return stringWithFileSystemRepresentation(path);
}

std::optional<FSRef> MXAlias::_fsRefForPath(const QString &path) {
    const auto bytes = fileSystemRepresentation(path);
    FSRef ref;
    return bytes && FSPathMakeRef(*bytes, &ref) == noErr ? std::optional(ref) : std::nullopt;
}

} // namespace MWCore
