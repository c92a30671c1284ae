// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArrayView>

namespace MWCore {

/// Blanks may surround a group, key or value in its line.
[[nodiscard]] constexpr bool isBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

/// One line of a desktop entry, as offsets into its bytes.
struct DesktopEntryLine {
    enum Kind { Other, Group, Key };

    Kind kind = Other;
    qsizetype begin = 0;
    qsizetype valueBegin = 0; ///< if kind is Key
    qsizetype end = 0;        ///< before the line end, which is LF or CR LF
    qsizetype next = 0;       ///< where the next line begins
    QByteArrayView group; ///< the group that the line opens or belongs to; null before the first
    QByteArrayView key;   ///< including its "[locale]", if any
};

/// Iterates over the lines of a desktop entry, which must outlive this and not change meanwhile.
class DesktopEntryLines {
public:
    explicit DesktopEntryLines(QByteArrayView bytes) : bytes_(bytes) {}

    /// Sets @p line to the next line; false after the last one.
    [[nodiscard]] bool next(DesktopEntryLine *line);

private:
    void readContent(DesktopEntryLine *line);

    QByteArrayView bytes_;
    QByteArrayView group_;
    qsizetype position_ = 0;
};

} // namespace MWCore
