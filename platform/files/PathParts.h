// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <algorithm>

#include <QByteArray>
#include <QList>

namespace MWCore {

/// The path of @p name in @p folder.
[[nodiscard]] inline QByteArray pathIn(const QByteArray &folder, const QByteArray &name) {
    return folder.endsWith('/') ? folder + name : folder + '/' + name;
}

/// Whether @p name is that of a folder itself or of its parent in its own list.
[[nodiscard]] inline bool isDots(QByteArrayView name) {
    return name == "." || name == "..";
}

/// The number of names in an absolute path.
[[nodiscard]] inline std::size_t nameCount(const QByteArray &path) {
    return path == "/" ? 0 : static_cast<std::size_t>(path.count('/'));
}

/// The names in a path, without the empty ones between slashes.
[[nodiscard]] inline QList<QByteArray> namesOf(const QByteArray &path) {
    QList<QByteArray> names = path.split('/');
    names.removeAll({});
    return names;
}

/// @p path as an absolute path; empty if the path of the current folder is unknown.
[[nodiscard]] QByteArray absolutePath(const QByteArray &path);

/// The parent folder and the name of an item, in file-system representation.
struct PathParts {
    /// "/" has the parent "/" and the name ""; a name alone has the parent ".". Slashes at the end
    /// of @p path are ignored.
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

/// The extension after that ".", in lower case; empty if there is none.
[[nodiscard]] inline QByteArray lowerExtensionOf(const QByteArray &name) {
    return name.sliced(std::min(name.size(), withoutExtension(name).size() + 1)).toLower();
}

} // namespace MWCore
