// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/DesktopEntryLines.h"

namespace MWCore {
namespace {

/// The group that a line "[group]" opens. Null, which is no group's name, for a damaged line, so
/// that the lines after it do not count as part of the previous group.
QByteArrayView groupOf(QByteArrayView content) {
    const qsizetype close = content.indexOf(']');
    return close < 0 ? QByteArrayView() : content.sliced(1, close - 1);
}

qsizetype skipBlanks(QByteArrayView bytes, qsizetype from, qsizetype end) {
    while (from < end && isBlank(bytes[from]))
        ++from;
    return from;
}

qsizetype skipBlanksBackwards(QByteArrayView bytes, qsizetype begin, qsizetype from) {
    while (from > begin && isBlank(bytes[from - 1]))
        --from;
    return from;
}

} // namespace

bool DesktopEntryLines::next(DesktopEntryLine *line) {
    if (position_ >= bytes_.size())
        return false;
    const qsizetype begin = position_;
    const qsizetype newline = bytes_.indexOf('\n', begin);
    position_ = newline < 0 ? bytes_.size() : newline + 1;
    qsizetype end = newline < 0 ? bytes_.size() : newline;
    if (end > begin && bytes_[end - 1] == '\r')
        --end;
    *line = {DesktopEntryLine::Other, begin, end, end, position_, group_, {}};
    readContent(line);
    return true;
}

void DesktopEntryLines::readContent(DesktopEntryLine *line) {
    const qsizetype first = skipBlanks(bytes_, line->begin, line->end);
    const QByteArrayView content = bytes_.sliced(first, line->end - first);
    if (content.startsWith('[')) {
        line->kind = DesktopEntryLine::Group;
        line->group = group_ = groupOf(content);
        return;
    }
    const qsizetype equals = content.startsWith('#') ? -1 : content.indexOf('=');
    if (equals <= 0)
        return;
    line->kind = DesktopEntryLine::Key;
    line->key = bytes_.sliced(first, skipBlanksBackwards(bytes_, first, first + equals) - first);
    line->valueBegin = skipBlanks(bytes_, first + equals + 1, line->end);
}

} // namespace MWCore
