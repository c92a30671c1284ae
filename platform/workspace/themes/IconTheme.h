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
/// What is found is kept: each index file and folder is read once, when a search first needs it; a
/// theme that has changed is a new object.
/// File systems that may not answer are not touched, except for that of the home folder. Any
/// thread.
class MWCORE_EXPORT IconTheme {
public:
    /// The user's theme. Costs nanoseconds; one call in five seconds looks for changes, as
    /// refresh() does.
    [[nodiscard]] static std::shared_ptr<const IconTheme> current();

    /// Makes current() another object if the user has chosen another theme, or if files or folders
    /// of this one have changed: one was added, removed or upgraded. Returns whether it did, or
    /// whether current() has found a change since the last call. Costs a millisecond or two.
    static bool refresh();

    /// The name of the notification (MXNotificationCenter) that current() has become another
    /// object. setCurrentName() and refresh() post it, on the thread that called them; current()
    /// does not.
    static constexpr const char *kChanged = "MWIconThemeChanged";

    /// The folders in which a change may make refresh() return true, for programs that watch
    /// folders. Those of single sizes are left out: a program that adds icons to them also modifies
    /// the theme's folder, so that caches are renewed.
    [[nodiscard]] static QStringList watchedFolders();

    /// For hosts that know from the session which theme the user has chosen. The user's theme is
    /// the first of these that is installed: @p name, which may be empty; what the settings of KDE
    /// (kdeglobals) and GTK (settings.ini) name; Adwaita; breeze; hicolor.
    static void setCurrentName(const QString &name);

    /// The theme @p name in the @p folders, the most important one first. If none has such a theme,
    /// only icons of hicolor and unthemed ones are found.
    explicit IconTheme(QString name, std::vector<QByteArray> folders = baseFolders());
    IconTheme(const IconTheme &) = delete;
    IconTheme &operator=(const IconTheme &) = delete;
    ~IconTheme();

    [[nodiscard]] QString name() const { return name_; }

    /// Whether files or folders that were read have changed since.
    [[nodiscard]] bool hasChanged() const;

    /// The path of a PNG, SVG or XPM file for the first of @p icons that the theme has, in the size
    /// nearest to @p size points at @p scale pixels per point. If it has none of them, the same of
    /// a theme that it inherits, of hicolor, or outside all themes. nullopt if there is no file.
    [[nodiscard]] std::optional<QByteArray> find(const QStringList &icons, int size,
                                                 int scale = 1) const;

    /// The folders in which themes and unthemed icons are looked for: of the user, then of the
    /// system.
    [[nodiscard]] static std::vector<QByteArray> baseFolders();

private:
    class Files;

    QString name_;
    std::unique_ptr<Files> files_;
};

} // namespace MWCore
