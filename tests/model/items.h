// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/item/MXFileSystemObject.h"
#include "platform/foundation/FileSystemText.h"

#include <ostream>
#include <string>

#include <QString>

inline QString text(const std::string &bytes) {
    return MWCore::stringWithFileSystemRepresentation(bytes);
}

/// The item at @p path with its children, or null.
inline MWCore::MXFileSystemObject::Ptr itemAt(const std::string &path) {
    return MWCore::MXFileSystemObject::newFSOForLocalPath(text(path));
}

/// The child with that name in the visible list, or null.
inline MWCore::MXFileSystemObject::Ptr child(const MWCore::MXFileSystemObject::Ptr &folder,
                                             const char *name) {
    for (const auto &item : folder->visibleItems())
        if (item->name() == text(name))
            return item;
    return {};
}

/// The names in the visible list, separated by blanks.
inline std::string names(const MWCore::MXFileSystemObject::Ptr &folder) {
    QStringList all;
    for (const auto &item : folder->visibleItems())
        all += item->name();
    return all.join(u' ').toStdString();
}

/// Shows the text in test failures.
inline void PrintTo(const QString &value, std::ostream *stream) {
    *stream << (value.isNull() ? "null" : '"' + value.toStdString() + '"');
}
