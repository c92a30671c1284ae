// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <optional>

#include <QByteArray>
#include <QString>
#include <QVariantMap>

namespace MWCore {

/// A snapshot of a folder with an information dictionary: the property list `Contents/Info.plist`
/// or `Info.plist`, or the desktop entry of an AppDir. Paths are in file-system representation. Any
/// thread.
class MWCORE_EXPORT Bundle {
public:
    /// nullopt if the folder has none of them or none can be read.
    [[nodiscard]] static std::optional<Bundle> open(const QByteArray &path);

    /// The folder, without "/" at the end.
    [[nodiscard]] QByteArray path() const { return path_; }

    /// Whether it is an application: `X.app` with `Contents/Info.plist`, or an AppDir.
    [[nodiscard]] bool isApplication() const { return isApplication_; }

    /// The content of the property list. A desktop entry's values are stored under the same keys,
    /// in the user's language.
    [[nodiscard]] QVariantMap infoDictionary() const { return infoDictionary_; }

    /// Invalid if the key is missing.
    [[nodiscard]] QVariant value(const QString &key) const { return infoDictionary_.value(key); }

    /// The file to start, in the bundle's folder of executables: the one that `CFBundleExecutable`
    /// names, else the one named like the bundle without its extension. `AppRun` in an AppDir.
    /// Empty if `CFBundleExecutable` is not a plain name, or the file is not a regular file.
    [[nodiscard]] QByteArray executablePath() const;

private:
    Bundle() = default;

    QByteArray path_;
    QByteArray executableFolder_; ///< empty for an AppDir
    QVariantMap infoDictionary_;
    bool isApplication_ = false;
};

} // namespace MWCore
