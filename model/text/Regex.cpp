// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/text/Regex.h"

#include "model/text/PatternLimits.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>

#include <locale.h>
#include <regex.h>

#include <QSet>

namespace MWCore::Regex {
namespace {

/// Sets the C library's locale to UTF-8 on this thread while it exists.
class Utf8Locale {
public:
    Utf8Locale() : before_(uselocale(utf8())) {}
    Utf8Locale(const Utf8Locale &) = delete;
    Utf8Locale &operator=(const Utf8Locale &) = delete;
    ~Utf8Locale() { uselocale(before_); }

private:
    /// The C library's built-in locale. Null, which keeps the current locale, if it is missing.
    static locale_t utf8() {
        static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return locale;
    }

    locale_t before_;
};

/// Names that file browsers hide. "bin" occurs twice, which is harmless.
const QSet<QString> &hiddenNames() {
    static const QSet<QString> names = {
        "bin",
        "cores",
        "Desktop DB",
        "Desktop DF",
        "dev",
        "etc",
        "mach",
        "mach_kernel",
        "mach.sym",
        "private",
        "bin",
        "SystemFolderX",
        "tmp",
        "Trash",
        "usr",
        "var",
        "VM Storage",
        "sbin",
        "TheVolumeSettingsFolder",
        "Network Trash Folder",
        "gmon.out",
        "TheFindByContentFolder",
        "automount",
        ".vol",
        ".hidden",
        ".Trashes",
        "Volumes",
        ".DS_Store",
        "Temporary Items",
    };
    return names;
}

constexpr QStringView kSpecialCharacters = u"\\.$^[()|*+?{";

/// @p text with a backslash before every unit for which @p isEscaped is true.
template <typename IsEscaped> QString escapedWhere(const QString &text, IsEscaped isEscaped) {
    QString escaped;
    escaped.reserve(text.size() + std::ranges::count_if(text, isEscaped));
    for (const QChar unit : text) {
        if (isEscaped(unit))
            escaped += u'\\';
        escaped += unit;
    }
    return escaped;
}

} // namespace

bool matchesRegex(const QString &text, const QString &pattern) {
    const QByteArray expression = cString(pattern);
    if (!isWithinLimits(expression))
        return false;
    const Utf8Locale utf8;
    regex_t compiled = {};
    if (regcomp(&compiled, expression.constData(), REG_EXTENDED | REG_ICASE | REG_NOSUB) != 0)
        return false;
    const QByteArray subject = cString(text);
    const bool matches = regexec(&compiled, subject.constData(), 0, nullptr, 0) == 0;
    regfree(&compiled);
    return matches;
}

QStringList arrayValue(const QString &text) {
    QStringList units;
    units.reserve(text.size());
    for (const QChar unit : text)
        units += unit;
    return units;
}

QString _escapeString(const QString &text) {
    const auto *const first =
        std::ranges::find_if_not(text, [](QChar unit) { return unit.isSpace(); });
    if (first == text.end() || !kSpecialCharacters.contains(*first))
        return text;
    return escapedWhere(text, [](QChar unit) { return kSpecialCharacters.contains(unit); });
}

QString _escapeString(const QString &string, const QString &forChar) {
    return escapedWhere(string, [&forChar](QChar unit) { return forChar == unit; });
}

bool isHidden(const QString &name) {
    return name.startsWith(u'.') || hiddenNames().contains(name);
}

} // namespace MWCore::Regex
