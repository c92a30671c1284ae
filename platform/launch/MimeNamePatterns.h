// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace MWCore {

/// Finds the part of a file's name that decides its MIME type. Nearly all patterns of the shared
/// MIME database have the form "*.suffix"; the few others are collected here. Any thread, once it
/// is read.
class MimeNamePatterns {
public:
    /// The patterns of the databases that QMimeDatabase uses, from their globs2 files. nullopt if
    /// it uses one that has no such file.
    [[nodiscard]] static std::optional<MimeNamePatterns> read();

    /// The end of @p name with which all names have the same types, except those for which this is
    /// nullopt: they match a pattern of another form. Begins with a dot that is not the name's
    /// first character; empty if there is none.
    [[nodiscard]] std::optional<QString> decidingSuffix(const QString &name) const;

private:
    [[nodiscard]] bool addFolder(const QString &folder);
    void addPattern(const QString &pattern);

    QStringList otherForms_; ///< the patterns not of the form "*.suffix", as regular expressions
    QRegularExpression anyOther_;
    qsizetype mostDots_ = 1; ///< in a pattern of that form
};

} // namespace MWCore
