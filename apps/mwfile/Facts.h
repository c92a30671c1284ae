// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "bytes.h"
#include "Colours.h"
#include "DisplayText.h"

#include <string>
#include <string_view>

namespace MWCore::mwfile {

/// What is known of an item: one line a fact, below a heading.
class Facts {
public:
    explicit Facts(const Colours &colours) : colours_(colours) {}

    void add(std::string label, std::string_view value) {
        constexpr std::size_t kLabelColumns = 14;
        label.resize(kLabelColumns, ' ');
        text_.append("  ").append(colours_.quiet(label)).append(value).append("\n");
    }

    /// Only where there is one.
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
