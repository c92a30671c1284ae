// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArrayView>

namespace MWCore {

/// Blanks may stand around what a line of a desktop entry holds.
[[nodiscard]] constexpr bool isBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

/// One line of a desktop entry, told by offsets into its bytes.
struct DesktopEntryLine {
    enum Kind { Other, Group, Key };

    Kind kind = Other;
    qsizetype begin = 0;
    qsizetype valueBegin = 0; ///< of a key
    qsizetype end = 0;        ///< before the line end, which is LF or CR LF
    qsizetype next = 0;       ///< where the next line begins
    QByteArrayView group; ///< the group that the line opens or belongs to; null before the first
    QByteArrayView key;   ///< with "[locale]", where it has one
};

/// Goes through the lines of a desktop entry, which outlives it and does not change meanwhile.
class DesktopEntryLines {
public:
    explicit DesktopEntryLines(QByteArrayView bytes) : bytes_(bytes) {}

    /// Makes @p line the next one; false behind the last.
    [[nodiscard]] bool next(DesktopEntryLine *line);

private:
    void readContent(DesktopEntryLine *line);

    QByteArrayView bytes_;
    QByteArrayView group_;
    qsizetype position_ = 0;
};

} // namespace MWCore
