// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "tests/support/Process.h"

#include <sstream>

/// Runs the command with @p arguments.
inline ProcessResult mwfile(std::vector<std::string> arguments,
                            const ProcessOptions &options = {}) {
    arguments.insert(arguments.begin(), MWFILE);
    return runProcess(arguments, options);
}

/// The program that reads and converts pictures.
inline std::string imageMagick() {
    const bool isNew = runProcess({"magick", "-version"}).status == 0;
    return isNew ? "magick" : "convert-im6.q16";
}

inline std::vector<std::string> linesOf(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// Parses @p json with Python and prints the Python expression @p expression over the data `d`.
/// Lone surrogates are printed as the bytes that they represent.
inline std::string readJson(const std::string &json, const std::string &expression) {
    ProcessOptions options;
    options.input = json;
    const ProcessResult result =
        runProcess({"python3", "-c",
                    "import json, sys\n"
                    "d = json.load(sys.stdin)\n"
                    "sys.stdout.buffer.write(str((" +
                        expression + ")).encode('utf-8', 'surrogateescape'))"},
                   options);
    return result.status == 0 ? result.output : "unreadable: " + result.errorOutput;
}
