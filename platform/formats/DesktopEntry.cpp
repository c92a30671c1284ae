// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/DesktopEntry.h"

#include "platform/formats/DesktopEntryLines.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace MWCore {
namespace {

struct EscapeRow {
    char letter; ///< after the backslash
    char byte;   ///< that the two represent
};
constexpr EscapeRow kEscapeRows[] = {
    {'s', ' '}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'\\', '\\'},
};

/// The last line of the key, if there is one.
std::optional<DesktopEntryLine> findKey(QByteArrayView bytes, QByteArrayView group,
                                        QByteArrayView key) {
    std::optional<DesktopEntryLine> found;
    DesktopEntryLines lines(bytes);
    for (DesktopEntryLine line; lines.next(&line);)
        if (line.kind == DesktopEntryLine::Key && line.group == group && line.key == key)
            found = line;
    return found;
}

QByteArrayView rawValue(QByteArrayView bytes, const DesktopEntryLine &line) {
    return bytes.sliced(line.valueBegin, line.end - line.valueBegin);
}

/// Resolves the escapes; a backslash before any other character is kept.
QString unescaped(QByteArrayView raw) {
    QByteArray plain;
    plain.reserve(raw.size() + 1); // makes it non-null even if the value is empty
    for (qsizetype index = 0; index < raw.size(); ++index) {
        const bool isPair = raw[index] == '\\' && index + 1 < raw.size();
        const auto *const row =
            isPair ? std::ranges::find(kEscapeRows, raw[index + 1], &EscapeRow::letter)
                   : std::end(kEscapeRows);
        plain += row == std::end(kEscapeRows) ? raw[index] : row->byte;
        index += row == std::end(kEscapeRows) ? 0 : 1;
    }
    return stringWithFileSystemRepresentation(plain);
}

/// Blanks are escaped only where they would be lost, so that the value stays readable.
QByteArray escaped(const QByteArray &plain) {
    QByteArray raw;
    for (qsizetype index = 0; index < plain.size(); ++index) {
        const auto *const row = std::ranges::find(kEscapeRows, plain[index], &EscapeRow::byte);
        const bool isInnerBlank = plain[index] == ' ' && index > 0 && index + 1 < plain.size();
        if (row == std::end(kEscapeRows) || isInnerBlank)
            raw += plain[index];
        else
            (raw += '\\') += row->letter;
    }
    return raw;
}

/// The locales to look for, best match first. The encoding is ignored, as the standard requires.
std::array<QByteArray, 4> localesFor(QByteArrayView locale) {
    const QByteArray whole = locale.toByteArray();
    const auto before = [](const QByteArray &text, char mark) {
        const qsizetype at = text.indexOf(mark);
        return at < 0 ? text : text.first(at);
    };
    const qsizetype at = whole.indexOf('@');
    const QByteArray modifier = at < 0 ? QByteArray() : whole.sliced(at);
    const QByteArray country = before(before(whole, '@'), '.');
    const QByteArray language = before(country, '_');
    return {country + modifier, country, language + modifier, language};
}

/// The index in @p locales of the locale of @p key, which is "name[locale]"; one past the last for
/// @p name alone. nullopt for any other key or locale.
std::optional<std::size_t> rankOf(QByteArrayView key, QByteArrayView name,
                                  const std::array<QByteArray, 4> &locales) {
    if (key == name)
        return locales.size();
    if (key.size() < name.size() + 2 || !key.startsWith(name) || key[name.size()] != '[' ||
        !key.endsWith(']'))
        return std::nullopt;
    const QByteArrayView locale = key.sliced(name.size() + 1).chopped(1);
    for (std::size_t rank = 0; rank < locales.size(); ++rank)
        if (locales[rank] == locale)
            return rank;
    return std::nullopt;
}

/// Whether the text, written as a group or key, would be read back as the same.
bool canName(QByteArrayView text, const char *forbidden) {
    return !text.isEmpty() && !isBlank(text.front()) && !isBlank(text.back()) &&
           std::ranges::none_of(text, [forbidden](char byte) {
               return byte == '\n' || byte == '\r' || byte == '\0' ||
                      QByteArrayView(forbidden).contains(byte);
           });
}

/// The group's last header or key line, after which a line can be added.
std::optional<DesktopEntryLine> lastLineOf(QByteArrayView bytes, QByteArrayView group) {
    std::optional<DesktopEntryLine> found;
    DesktopEntryLines lines(bytes);
    for (DesktopEntryLine line; lines.next(&line);)
        if (line.kind != DesktopEntryLine::Other && line.group == group)
            found = line;
    return found;
}

} // namespace

std::optional<QString> DesktopEntry::value(QByteArrayView group, QByteArrayView key) const {
    const auto line = findKey(bytes_, group, key);
    return line ? std::optional(unescaped(rawValue(bytes_, *line))) : std::nullopt;
}

void DesktopEntry::findValues(QByteArrayView group, std::span<const QByteArrayView> keys,
                              std::span<std::optional<QString>> values) const {
    std::vector<DesktopEntryLine> found(keys.size());
    DesktopEntryLines lines(bytes_);
    for (DesktopEntryLine line; lines.next(&line);) {
        if (line.kind != DesktopEntryLine::Key || line.group != group)
            continue;
        const auto key = std::ranges::find(keys, line.key);
        if (key != keys.end())
            found[static_cast<std::size_t>(key - keys.begin())] = line;
    }
    for (std::size_t index = 0; index < keys.size(); ++index)
        if (found[index].kind == DesktopEntryLine::Key)
            values[index] = unescaped(rawValue(bytes_, found[index]));
}

std::optional<QString> DesktopEntry::localizedValue(QByteArrayView group, QByteArrayView key,
                                                    QByteArrayView locale) const {
    const auto locales = localesFor(locale);
    std::size_t best = locales.size(); // the rank of the key without a locale
    std::optional<DesktopEntryLine> found;
    DesktopEntryLines lines(bytes_);
    for (DesktopEntryLine line; lines.next(&line);) {
        if (line.kind != DesktopEntryLine::Key || line.group != group)
            continue;
        const auto rank = rankOf(line.key, key, locales);
        if (!rank || *rank > best)
            continue;
        best = *rank;
        found = line;
    }
    return found ? std::optional(unescaped(rawValue(bytes_, *found))) : std::nullopt;
}

QStringList DesktopEntry::list(QByteArrayView group, QByteArrayView key) const {
    const auto line = findKey(bytes_, group, key);
    if (!line)
        return {};
    QStringList items;
    QByteArray item;
    bool isOpen = false; // the last item needs no ";" after it
    const QByteArrayView raw = rawValue(bytes_, *line);
    for (qsizetype index = 0; index < raw.size(); ++index) {
        isOpen = raw[index] != ';';
        if (!isOpen) {
            items += unescaped(std::exchange(item, {}));
            continue;
        }
        const bool isPair = raw[index] == '\\' && index + 1 < raw.size();
        if (isPair && raw[index + 1] != ';')
            item += raw[index];
        item += raw[isPair ? ++index : index];
    }
    if (isOpen)
        items += unescaped(item);
    return items;
}

std::optional<bool> DesktopEntry::boolean(QByteArrayView group, QByteArrayView key) const {
    const auto line = findKey(bytes_, group, key);
    const QByteArrayView raw = line ? rawValue(bytes_, *line).trimmed() : QByteArrayView();
    if (raw == "true" || raw == "false")
        return raw == "true";
    return std::nullopt;
}

bool DesktopEntry::setValue(QByteArrayView group, QByteArrayView key, const QString &value) {
    const auto plain = fileSystemRepresentation(value);
    if (!plain || !canName(group, "[]") || !canName(key, "=") || key.startsWith('#') ||
        key.startsWith('['))
        return false;
    const QByteArray raw = escaped(*plain);
    if (const auto line = findKey(bytes_, group, key)) {
        bytes_.replace(line->valueBegin, line->end - line->valueBegin, raw);
        return true;
    }
    const QByteArray assignment = key.toByteArray() + '=' + raw;
    const auto before = lastLineOf(bytes_, group);
    const bool isEnded = bytes_.isEmpty() || bytes_.endsWith('\n');
    if (!before) {
        bytes_ += (isEnded ? "[" : "\n[") + group.toByteArray() + "]\n" + assignment + '\n';
        return true;
    }
    const QByteArray lineEnd = bytes_.sliced(before->end, before->next - before->end);
    const bool isLineEnded = lineEnd.endsWith('\n'); // the file may end between CR and LF
    bytes_.insert(before->next, isLineEnded ? assignment + lineEnd : '\n' + assignment);
    return true;
}

void DesktopEntry::removeKey(QByteArrayView group, QByteArrayView key) {
    QByteArray kept;
    kept.reserve(bytes_.size());
    DesktopEntryLines lines(bytes_);
    for (DesktopEntryLine line; lines.next(&line);)
        if (line.kind != DesktopEntryLine::Key || line.group != group || line.key != key)
            kept += QByteArrayView(bytes_).sliced(line.begin, line.next - line.begin);
    bytes_ = kept;
}

QByteArray DesktopEntry::messagesLocale() {
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (QByteArray locale = qgetenv(variable); !locale.isEmpty())
            return locale;
    return {};
}

} // namespace MWCore
