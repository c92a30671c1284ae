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

inline std::vector<std::string> linesOf(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// What an independent reader of JSON makes of the output: the Python expression @p expression over
/// the data `d`, printed. Lone surrogates come out as the bytes that they carry.
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
