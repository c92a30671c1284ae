// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "LabelledLines.h"

#include "DisplayText.h"
#include "TextBytes.h"
#include "WrappedText.h"

#include <algorithm>
#include <utility>

namespace MWCore::mwfile {
namespace {

constexpr const char *kIndent = "  ";
constexpr std::size_t kLabelColumns = 14;

} // namespace

void LabelledLines::add(std::string label, std::string value) {
    label.resize(kLabelColumns, ' ');
    lines_.push_back({std::move(label), std::move(value)});
}

void LabelledLines::addText(const char *label, const QString &value) {
    if (!value.isEmpty())
        add(label, DisplayText(bytesOf(value)).text());
}

std::string LabelledLines::text() const {
    std::string text;
    for (const Line &line : lines_)
        text.append(kIndent).append(colours_.dimmed(line.label)).append(line.value).append("\n");
    return text;
}

std::vector<std::string> LabelledLines::wrapped(int columns) const {
    const int width = std::max(columns - static_cast<int>(kLabelColumns) - 2, 1);
    std::vector<std::string> texts;
    for (const Line &line : lines_) {
        std::string start = kIndent + colours_.dimmed(line.label);
        for (const std::string &part : wrappedText(line.value, width))
            texts.push_back(std::exchange(start, std::string(kLabelColumns + 2, ' ')) + part);
    }
    return texts;
}

} // namespace MWCore::mwfile
