// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <algorithm>

#include <QByteArray>

namespace MWCore {

/// The path of @p name in @p folder.
[[nodiscard]] inline QByteArray pathIn(const QByteArray &folder, const QByteArray &name) {
    return folder.endsWith('/') ? folder + name : folder + '/' + name;
}

/// @p path from the root folder on; empty when that of the current folder cannot be told.
[[nodiscard]] QByteArray absolutePath(const QByteArray &path);

/// The folder and the name in it of an item, in file-system representation.
struct PathParts {
    /// "/" has the name "" in "/"; a name alone is in the current folder, ".". Slashes at the end
    /// of @p path mean nothing.
    explicit PathParts(const QByteArray &path) {
        qsizetype end = path.size();
        while (end > 1 && path[end - 1] == '/')
            --end;
        const qsizetype slash = path.lastIndexOf('/', end - 1);
        parent = slash < 0 ? "." : path.first(std::max<qsizetype>(slash, 1));
        name = path.sliced(slash + 1, end - slash - 1);
    }

    /// The path of @p sibling in the same folder.
    [[nodiscard]] QByteArray beside(const QByteArray &sibling) const {
        return pathIn(parent, sibling);
    }

    QByteArray parent;
    QByteArray name;
};

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
