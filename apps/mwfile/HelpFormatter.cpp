// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "HelpFormatter.h"

#include <sstream>

namespace MWCore::mwfile {
namespace {

constexpr std::size_t kColumns = 80;
constexpr std::size_t kDescriptionColumn = 24;

} // namespace

HelpFormatter::HelpFormatter() {
    column_width(kDescriptionColumn);
    label("REQUIRED", "");
    label("TEXT", "");
}

/// The description, broken between words.
std::string HelpFormatter::make_option_desc(const CLI::Option *option) const {
    constexpr std::size_t kWidth = kColumns - kDescriptionColumn;
    std::istringstream words(option->get_description());
    std::string text;
    std::size_t used = 0;
    for (std::string word; words >> word; used += word.size()) {
        const bool fits = used + 1 + word.size() <= kWidth;
        if (!text.empty())
            text += fits ? ' ' : '\n';
        used = fits ? used + 1 : 0;
        text += word;
    }
    return text;
}

} // namespace MWCore::mwfile
