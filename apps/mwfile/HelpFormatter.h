// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace MWCore::mwfile {

/// Formats the help so that no line is wider than 80 columns.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();

    std::string make_option_desc(const CLI::Option *option) const override;
};

} // namespace MWCore::mwfile
