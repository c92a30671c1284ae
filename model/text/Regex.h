// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <QString>
#include <QStringList>

/// Operations on texts that help to decide what to hide. Any thread.
namespace MWCore::Regex {

/// Whether the extended regular expression @p pattern (POSIX) matches anywhere in @p text, without
/// regard to case. Both are taken as UTF-8, up to their first U+0000. False for a pattern that does
/// not compile, refers back to a group ("\1"), or would take too long (PatternLimits.h): more than
/// 4,096 bytes, 250 groups or three repetitions in one another, or 10,000 parts when written out.
/// The C library compiles no range beyond ASCII; single characters in brackets may be any.
[[nodiscard]] MWCORE_EXPORT bool matchesRegex(const QString &text, const QString &pattern);

/// The UTF-16 code units, each a text of its own.
[[nodiscard]] MWCORE_EXPORT QStringList arrayValue(const QString &text);

/// The text with a backslash before each of \ . $ ^ [ ( ) | * + ? {, so that a pattern takes it
/// literally; deliberately unchanged unless the first character behind leading white space is one
/// of them.
[[nodiscard]] MWCORE_EXPORT QString _escapeString(const QString &text);

/// @p string with a backslash before every code unit that equals the text @p forChar.
[[nodiscard]] MWCORE_EXPORT QString _escapeString(const QString &string, const QString &forChar);

/// Whether a file browser hides an item of that name unless asked: names that begin with a dot, and
/// 28 names of system folders and files such as "bin", "usr" and "Temporary Items".
[[nodiscard]] MWCORE_EXPORT bool isHidden(const QString &name);

} // namespace MWCore::Regex
