// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/private/text_views.h"

#include <algorithm>

#include <QByteArray>

/// Parts of a path in file-system representation.
namespace MWCore {

/// The path without "/" at its end, except the one that is all of it.
[[nodiscard]] inline QByteArray withoutSlashes(QByteArray path) {
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path;
}

/// The last component, "/" at the end being ignored.
[[nodiscard]] inline QByteArray nameOf(const QByteArray &path) {
    const QByteArray whole = withoutSlashes(path);
    const std::string_view name = lastComponent({whole.constData(), std::size_t(whole.size())});
    return {name.data(), qsizetype(name.size())};
}

/// The name up to its last ".", unless that is its first byte.
[[nodiscard]] inline QByteArray withoutExtension(const QByteArray &name) {
    const qsizetype dot = name.lastIndexOf('.');
    return dot > 0 ? name.first(dot) : name;
}

/// What stands behind that ".", in small letters; empty for a name without it.
[[nodiscard]] inline QByteArray lowerExtensionOf(const QByteArray &name) {
    return name.sliced(std::min(name.size(), withoutExtension(name).size() + 1)).toLower();
}

} // namespace MWCore
