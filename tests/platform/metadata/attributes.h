// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include <QByteArray>

#include <sys/xattr.h>

/// Extended attributes and whole files, read and written without the library.
namespace raw {

inline bool setAttribute(const std::string &path, const char *name, const QByteArray &value) {
    return lsetxattr(path.c_str(), name, value.constData(), static_cast<std::size_t>(value.size()),
                     0) == 0;
}

/// nullopt if there is none.
inline std::optional<QByteArray> attribute(const std::string &path, const char *name) {
    QByteArray value(65536, '\0');
    const ssize_t length = lgetxattr(path.c_str(), name, value.data(), 65536);
    return length < 0 ? std::nullopt : std::optional(value.first(length));
}

inline void write(const std::string &path, const QByteArray &content) {
    std::ofstream(path, std::ios::binary) << content.toStdString();
}

/// nullopt if there is no such file.
inline std::optional<QByteArray> content(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return QByteArray::fromStdString({std::istreambuf_iterator<char>(file), {}});
}

} // namespace raw
