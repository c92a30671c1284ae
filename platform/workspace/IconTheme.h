// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <memory>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace MWCore {

/// The files of an icon theme and of those that it inherits (XDG Icon Theme Specification, 0.13).
/// Folders and index files are read when they are first needed, and kept. Any thread.
class MWCORE_EXPORT IconTheme {
public:
    /// The user's theme: that of setCurrentName(), else what the settings of the desktop say that
    /// are stored in files (KDE's kdeglobals, GTK's settings.ini), else the first of Adwaita and
    /// breeze that is installed, else hicolor. Shared; read again when the name is set.
    [[nodiscard]] static const IconTheme &current();

    /// For hosts that know the theme's name from the session. An empty name ends that.
    static void setCurrentName(const QString &name);

    /// The theme @p name in the @p folders, the most important one first. Without a theme of that
    /// name only hicolor and unthemed files are found.
    IconTheme(const QString &name, const std::vector<QByteArray> &folders = baseFolders());
    ~IconTheme();

    [[nodiscard]] QString name() const;

    /// The path of the file for the first of @p names that there is in the theme or in one that it
    /// inherits, in the size nearest to @p size points at @p scale, as the specification's look-up
    /// finds it: PNG or SVG. nullopt if none of the names is known; a name with "/" is not.
    [[nodiscard]] std::optional<QByteArray> find(const QStringList &names, int size,
                                                 int scale = 1) const;

    /// The folders in which themes are looked for: of the user, of the system, and unthemed icons.
    [[nodiscard]] static std::vector<QByteArray> baseFolders();

private:
    struct Index;
    std::unique_ptr<Index> index_;
};

} // namespace MWCore
