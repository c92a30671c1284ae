// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <array>
#include <optional>
#include <span>

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace MWCore {

/// A file of groups, keys and values in the form of the XDG desktop entry standard, 1.5. It is kept
/// as its bytes, so that what is not changed stays as it is: comments, blanks around "=", foreign
/// keys and groups, line ends. Every operation is one pass over the bytes, whatever they hold.
///
/// Groups and keys are bytes; values are texts in which a byte that is not UTF-8 is carried as by
/// stringWithFileSystemRepresentation(). Of a key that is there twice, the last one counts.
class MWCORE_EXPORT DesktopEntry {
public:
    /// The group that makes a file a desktop entry.
    static constexpr QByteArrayView kMainGroup = "Desktop Entry";

    DesktopEntry() = default;
    explicit DesktopEntry(QByteArray bytes) : bytes_(std::move(bytes)) {}

    /// The value of the key as it stands, escapes undone. Nothing for a key that is not there.
    [[nodiscard]] std::optional<QString> value(QByteArrayView group, QByteArrayView key) const;

    /// The same of several keys of a group, in one pass.
    template <std::size_t Count>
    [[nodiscard]] std::array<std::optional<QString>, Count>
    values(QByteArrayView group, const std::array<QByteArrayView, Count> &keys) const {
        std::array<std::optional<QString>, Count> found;
        findValues(group, keys, found);
        return found;
    }

    /// The value for @p locale, "lang_COUNTRY.ENCODING@MODIFIER": the most special of the forms
    /// that are there, at last the one without a locale.
    [[nodiscard]] std::optional<QString>
    localizedValue(QByteArrayView group, QByteArrayView key,
                   QByteArrayView locale = messagesLocale()) const;

    /// The items of a value that ";" separates or ends. Empty for a key that is not there.
    [[nodiscard]] QStringList list(QByteArrayView group, QByteArrayView key) const;

    /// Nothing for a value other than "true" and "false", too.
    [[nodiscard]] std::optional<bool> boolean(QByteArrayView group, QByteArrayView key) const;

    /// Replaces the value in its line, or adds a line at the end of the group, or the group at the
    /// end of the file. False, and nothing changes, for what such a file cannot hold: a group or
    /// key that would not be read back as one, a text that has no bytes.
    [[nodiscard]] bool setValue(QByteArrayView group, QByteArrayView key, const QString &value);

    /// Removes every line of the key.
    void removeKey(QByteArrayView group, QByteArrayView key);

    [[nodiscard]] QByteArray toBytes() const { return bytes_; }

    /// The locale for messages in this process's environment, "" when it names none.
    [[nodiscard]] static QByteArray messagesLocale();

private:
    void findValues(QByteArrayView group, std::span<const QByteArrayView> keys,
                    std::span<std::optional<QString>> values) const;

    QByteArray bytes_;
};

} // namespace MWCore
