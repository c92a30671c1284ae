// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/workspace/icons/IconServices.h"
#include "platform/workspace/ResponsiveFiles.h"

#include <cstdint>
#include <optional>

#include <QByteArray>

#include <sys/stat.h>

/// Files from which icons are read, at paths that others have chosen and may change at any moment.
/// Any thread.
namespace MWCore {

/// A number for the content of a file: another one once the file is changed or replaced. Never 0.
[[nodiscard]] uint64_t versionOf(const struct stat &file);

/// Makes the version of @p icon depend on @p version, too.
void addVersion(IconRef &icon, uint64_t version);

/// A regular file, found once.
struct IconFile {
    Descriptor item; ///< O_PATH
    QByteArray path; ///< without links
    uint64_t version;

    /// The content; nullopt if it cannot be read or is longer than @p limit bytes.
    [[nodiscard]] std::optional<QByteArray> read(int64_t limit) const;
};

/// nullopt if no regular file is at @p path.
[[nodiscard]] std::optional<IconFile> findIconFile(ResponsiveFiles &files, const QByteArray &path);

/// Puts the file before all else that @p icon consists of, except for a custom icon.
void setFile(IconRef &icon, const IconFile &file);

/// Puts an icon of the theme, the item's own, before all else, except for a custom icon. Ignores
/// what cannot be a name.
void setThemeName(IconRef &icon, const QString &name);

/// The content of the file of an icon that was found earlier. nullopt if one of the folders on its
/// path is now a link.
[[nodiscard]] std::optional<QByteArray> readIconFile(const QByteArray &path, int64_t limit);

/// customIconOf() the item at @p path. An item that was moved is not searched for.
[[nodiscard]] OSStatus customIconAt(const QByteArray &path, IconFamilyHandle *iconFamily);

/// The files in a folder. Belongs to one thread.
class FolderFiles {
public:
    explicit FolderFiles(const QByteArray &folder);

    /// The path without links; empty if there is no such folder.
    [[nodiscard]] const QByteArray &path() const { return path_; }

    /// The regular file @p name, a path in the folder; nullopt also if it leads out of the folder.
    [[nodiscard]] std::optional<IconFile> find(const QByteArray &name);

    /// The same wherever it leads.
    [[nodiscard]] std::optional<IconFile> findAnywhere(const QByteArray &name);

private:
    ResponsiveFiles files_;
    QByteArray path_;
};

} // namespace MWCore
