// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace MWCore {

constexpr QByteArrayView kDesktopEntrySuffix = ".desktop"; ///< of the file's name

/// How many bytes of a desktop entry are read; more than any alias record and URL take.
constexpr int64_t kLongestDesktopEntry = 65'536;

/// A file of groups, keys and values in the format of the XDG desktop entry standard, 1.5. It is
/// stored as its bytes, so that everything that is not changed is preserved: comments, blanks
/// around "=", unknown keys and groups, line ends. Every operation is one pass over the bytes,
/// however damaged they are.
///
/// Groups and keys are bytes; values are texts as made by stringWithFileSystemRepresentation(), so
/// that invalid UTF-8 is preserved. If a key occurs more than once in a group, its last line
/// counts.
class MWCORE_EXPORT DesktopEntry {
public:
    /// The group that makes a file a desktop entry.
    static constexpr QByteArrayView kMainGroup = "Desktop Entry";

    DesktopEntry() = default;
    explicit DesktopEntry(QByteArray bytes) : bytes_(std::move(bytes)) {}

    /// The value of the key with its escapes resolved; nullopt if the key is missing.
    [[nodiscard]] std::optional<QString> value(QByteArrayView group, QByteArrayView key) const;

    /// The values of several keys of a group, found in one pass.
    template <std::size_t Count>
    [[nodiscard]] std::array<std::optional<QString>, Count>
    values(QByteArrayView group, const std::array<QByteArrayView, Count> &keys) const {
        std::array<std::optional<QString>, Count> found;
        findValues(group, keys, found);
        return found;
    }

    /// The value for @p locale, "lang_COUNTRY.ENCODING@MODIFIER": of the key with the most specific
    /// matching locale, else of the key without a locale. nullopt if both are missing.
    [[nodiscard]] std::optional<QString>
    localizedValue(QByteArrayView group, QByteArrayView key,
                   QByteArrayView locale = messagesLocale()) const;

    /// The items of a value, separated or terminated by ";". Empty if the key is missing.
    [[nodiscard]] QStringList list(QByteArrayView group, QByteArrayView key) const;

    /// nullopt if the key is missing or its value is neither "true" nor "false".
    [[nodiscard]] std::optional<bool> boolean(QByteArrayView group, QByteArrayView key) const;

    /// Replaces the value in its line, or adds a line at the end of the group, or the group at the
    /// end of the file. Returns false and changes nothing if the file cannot represent it: the
    /// group or key would not be read back as the same, or @p value has no file-system
    /// representation.
    [[nodiscard]] bool setValue(QByteArrayView group, QByteArrayView key, const QString &value);

    /// Removes every line of the key.
    void removeKey(QByteArrayView group, QByteArrayView key);

    [[nodiscard]] QByteArray toBytes() const { return bytes_; }

    /// The locale for messages in this process's environment; empty if it names none.
    [[nodiscard]] static QByteArray messagesLocale();

private:
    void findValues(QByteArrayView group, std::span<const QByteArrayView> keys,
                    std::span<std::optional<QString>> values) const;

    QByteArray bytes_;
};

} // namespace MWCore
