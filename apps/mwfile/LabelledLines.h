// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "Colours.h"
#include "DisplayText.h"
#include "TextBytes.h"

#include <string>
#include <string_view>

namespace MWCore::mwfile {

/// Lines of a label and a value, for printing below a heading.
class LabelledLines {
public:
    explicit LabelledLines(const Colours &colours) : colours_(colours) {}

    void add(std::string label, std::string_view value) {
        constexpr std::size_t kLabelColumns = 14;
        label.resize(kLabelColumns, ' ');
        text_.append("  ").append(colours_.dimmed(label)).append(value).append("\n");
    }

    /// Adds nothing if @p value is empty.
    void addText(const char *label, const QString &value) {
        if (!value.isEmpty())
            add(label, DisplayText(bytesOf(value)).text());
    }

    [[nodiscard]] const std::string &text() const { return text_; }

private:
    const Colours &colours_;
    std::string text_;
};

} // namespace MWCore::mwfile
