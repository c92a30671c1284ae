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

/// Makes the C library read texts as UTF-8 on this thread, whatever the host's locale is.
class InUtf8 {
public:
    InUtf8() : before_(uselocale(utf8())) {}
    InUtf8(const InUtf8 &) = delete;
    InUtf8 &operator=(const InUtf8 &) = delete;
    ~InUtf8() { uselocale(before_); }

private:
    /// The one that the C library has built in; null, which changes nothing, should it be missing.
    static locale_t utf8() {
        static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return locale;
    }

    locale_t before_;
};

/// Names that a file browser hides. "bin" stands there twice, which harms nobody.
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

/// With a backslash before the units that @p isEscaped names.
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
    const InUtf8 inUtf8;
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
