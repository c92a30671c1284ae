// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "Colours.h"

#include <string>
#include <string_view>
#include <vector>

#include <QString>

namespace MWCore::mwfile {

/// Lines of a label and a value, for printing below a heading.
class LabelledLines {
public:
    explicit LabelledLines(const Colours &colours) : colours_(colours) {}

    void add(std::string label, std::string value);

    /// Adds nothing if @p value is empty.
    void addText(const char *label, const QString &value);

    [[nodiscard]] std::string text() const;

    /// The lines, none wider than @p columns: long values continue on lines of their own.
    [[nodiscard]] std::vector<std::string> wrapped(int columns) const;

private:
    struct Line {
        std::string label; ///< as wide as the others
        std::string value;
    };

    const Colours &colours_;
    std::vector<Line> lines_;
};

} // namespace MWCore::mwfile
