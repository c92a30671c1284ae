// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <optional>

#include <QByteArray>
#include <QString>
#include <QVariantMap>

namespace MWCore {

/// A folder that describes itself by an information dictionary: the property list
/// `Contents/Info.plist` or `Info.plist`, or the desktop entry of an AppDir. A snapshot. Paths in
/// file-system representation. Any thread.
class MWCORE_EXPORT Bundle {
public:
    /// Nothing for a folder without any of them, or in which none can be read.
    [[nodiscard]] static std::optional<Bundle> open(const QByteArray &path);

    /// The folder, without "/" at the end.
    [[nodiscard]] QByteArray path() const { return path_; }

    /// Whether it is an application: `X.app` with `Contents/Info.plist`, or an AppDir.
    [[nodiscard]] bool isApplication() const { return isApplication_; }

    /// What the property list says. What a desktop entry says stands under the same keys, in the
    /// language of the user.
    [[nodiscard]] QVariantMap infoDictionary() const { return infoDictionary_; }

    /// Invalid for a key that is not there.
    [[nodiscard]] QVariant value(const QString &key) const { return infoDictionary_.value(key); }

    /// The file to start: the one that `CFBundleExecutable` names, else the one named like the
    /// folder without its extension, where the bundle keeps executables; `AppRun` in an AppDir.
    /// Empty when it is no file, or named by more than a name.
    [[nodiscard]] QByteArray executablePath() const;

private:
    Bundle() = default;

    QByteArray path_;
    QByteArray executableFolder_; ///< empty for an AppDir
    QVariantMap infoDictionary_;
    bool isApplication_ = false;
};

} // namespace MWCore
