// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <QString>
#include <QStringList>

/// Pattern matching, and the names that file browsers hide. Any thread.
namespace MWCore::Regex {

/// Whether the extended regular expression @p pattern (POSIX) matches anywhere in @p text, ignoring
/// case. Both are read as UTF-8 up to their first U+0000. False if the pattern does not compile,
/// has a back-reference ("\1") or could take too long: if it has more than 4,096 bytes, 250 groups
/// or three nested repetitions, or more than 10,000 parts when its repetitions are expanded. Ranges
/// in brackets must be ASCII; single characters need not be.
[[nodiscard]] MWCORE_EXPORT bool matchesRegex(const QString &text, const QString &pattern);

/// The UTF-16 code units of @p text, one per string.
[[nodiscard]] MWCORE_EXPORT QStringList arrayValue(const QString &text);

/// The text with a backslash before each of \ . $ ^ [ ( ) | * + ? {, for use as a literal in a
/// pattern. Deliberately unchanged unless the first character after leading white space is one of
/// them.
[[nodiscard]] MWCORE_EXPORT QString _escapeString(const QString &text);

/// @p string with a backslash before every code unit that is equal to @p forChar.
[[nodiscard]] MWCORE_EXPORT QString _escapeString(const QString &string, const QString &forChar);

/// Whether file browsers hide items of that name by default: names that begin with a dot, and 28
/// names of system folders and files such as "bin", "usr" and "Temporary Items".
[[nodiscard]] MWCORE_EXPORT bool isHidden(const QString &name);

} // namespace MWCore::Regex
