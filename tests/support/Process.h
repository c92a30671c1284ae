// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <string>
#include <vector>

/// What a finished process printed and how it ended.
struct ProcessResult {
    std::string output;
    std::string complaints; ///< standard error; part of `output` on a terminal
    int status = -1;        ///< exit status, or 128 + the signal that ended it
};

/// Where a process's standard output leads.
enum class OutputTo { Pipe, Terminal };

struct ProcessOptions {
    std::vector<std::string> environment; ///< "NAME=value", in addition to this process's own
    OutputTo outputTo = OutputTo::Pipe;
    std::string workingFolder;
    std::string input;     ///< what standard input holds
    bool asNobody = false; ///< gives up root's rights first, where there are any
};

/// Runs a command to its end.
ProcessResult runProcess(std::vector<std::string> command, const ProcessOptions &options = {});

/// Runs @p work in a process of its own; returns what it returns (0 to 127).
int runForked(const std::function<int()> &work);

/// As runForked(), without root's rights.
int runAsNobody(const std::function<int()> &work);
