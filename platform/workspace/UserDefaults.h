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

/// The settings of the host application, kept for its user from one run to the next: those that
/// QSettings keeps for the host's organization and application name, so that both see each other's
/// plain keys. Without an application name the executable's stands in; without an organization the
/// application's name stands alone (NAME.conf in the user's configuration folder).
///
/// The superuser has no settings, and synchronize() gives AccessError, where another user can
/// exchange the file or a folder on the way to it, as in that user's home folder.
///
/// A key is any text. No character groups keys, and keys differ by case.
///
/// An object is cheap, sees the changes of others in the process once they are written, and belongs
/// to one thread at a time. Changes are written when it goes or by synchronize(): the file is
/// replaced as a whole, so it is never found half written, and not at all where there is no room
/// for it.
class MWCORE_EXPORT UserDefaults {
public:
    UserDefaults();
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;
    ~UserDefaults();

    [[nodiscard]] bool contains(const QString &key) const;

    /// Invalid where there is none. A value read from the file is text or bytes; the readers below
    /// know what it means. A text without UTF-8 form (a path may have none) is kept as bytes.
    [[nodiscard]] QVariant value(const QString &key) const;

    /// An invalid value removes the key.
    void setValue(const QString &key, const QVariant &value);

    void remove(const QString &key);

    // Each gives its default where there is no value, or none that can be read as asked. Of texts,
    // "", "0" and "false" read as false, all others as true.
    [[nodiscard]] QString text(const QString &key, const QString &byDefault = {}) const;
    [[nodiscard]] qint64 integer(const QString &key, qint64 byDefault = 0) const;
    [[nodiscard]] double real(const QString &key, double byDefault = 0) const;
    [[nodiscard]] bool boolean(const QString &key, bool byDefault = false) const;
    [[nodiscard]] QByteArray bytes(const QString &key, const QByteArray &byDefault = {}) const;

    /// Writes what changed here and reads what changed in the file. AccessError: the file could not
    /// be read or replaced; the changes stay here for the next time. FormatError:
    /// not all that was read from it are settings; the rest goes when a change is written.
    [[nodiscard]] QSettings::Status synchronize();

private:
    [[nodiscard]] bool hasRoom() const;

    QSettings settings_;
    QVariantMap changes_; ///< not yet written, by QSettings' keys; invalid: removed
};

} // namespace MWCore
