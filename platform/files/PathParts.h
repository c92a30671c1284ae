// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>

namespace MWCore {

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
        return parent.endsWith('/') ? parent + sibling : parent + '/' + sibling;
    }

    QByteArray parent;
    QByteArray name;
};

} // namespace MWCore
