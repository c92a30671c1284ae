// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <QByteArray>
#include <QMap>
#include <QSettings>
#include <QString>
#include <QVariant>

namespace MWCore {

/// The settings of the host application, stored for its user from one run to the next. They are the
/// ones that QSettings stores for the host's organization and application name, so that both see
/// each other's plain keys. Without an application name the executable's name is used; without an
/// organization, the application's name alone (NAME.conf in the user's configuration folder).
///
/// The superuser has no settings, and synchronize() returns AccessError, if another user can
/// replace the file or a folder on its path, as in that user's home folder.
///
/// A key is any text and case-sensitive. No character groups keys.
///
/// An object is cheap, sees changes made by other objects in the process once they are written, and
/// belongs to one thread at a time. Changes are written by the destructor or by synchronize(). The
/// file is replaced atomically, and not at all if there is no room for it.
class MWCORE_EXPORT UserDefaults {
public:
    UserDefaults();
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;
    ~UserDefaults();

    [[nodiscard]] bool contains(const QString &key) const;

    /// Invalid if there is none. A value read from the file is text or bytes; the getters below
    /// convert it. A text that UTF-8 cannot represent, such as some paths, is stored as bytes.
    [[nodiscard]] QVariant value(const QString &key) const;

    /// An invalid value removes the key.
    void setValue(const QString &key, const QVariant &value);

    void remove(const QString &key);

    // Each returns @p byDefault if there is no value or it cannot be converted. The texts "", "0"
    // and "false" convert to false, all others to true.
    [[nodiscard]] QString text(const QString &key, const QString &byDefault = {}) const;
    [[nodiscard]] qint64 integer(const QString &key, qint64 byDefault = 0) const;
    [[nodiscard]] double real(const QString &key, double byDefault = 0) const;
    [[nodiscard]] bool boolean(const QString &key, bool byDefault = false) const;
    [[nodiscard]] QByteArray bytes(const QString &key, const QByteArray &byDefault = {}) const;

    /// Writes the changes made here and reads those made in the file. AccessError: the file could
    /// not be read or replaced; the changes are kept for the next time. FormatError: parts of the
    /// file are not settings; they are lost when a change is written.
    [[nodiscard]] QSettings::Status synchronize();

private:
    [[nodiscard]] bool hasRoom() const;

    QSettings settings_;
    QVariantMap changes_; ///< not written yet, by QSettings key; an invalid value removes the key
};

} // namespace MWCore
