// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

/// The user and the group without rights.
constexpr uid_t kNobody = 65534;

/// The output and the exit status of a finished process.
struct ProcessResult {
    std::string output;
    std::string errorOutput; ///< standard error; on a terminal it is part of `output`
    int status = -1;         ///< exit status, or 128 + the signal that ended it
};

/// Where a process's standard output goes.
enum class OutputTo { Pipe, Terminal };

struct ProcessOptions {
    std::vector<std::string> environment; ///< "NAME=value", in addition to this process's own
    OutputTo outputTo = OutputTo::Pipe;
    std::string workingFolder;
    std::string input;     ///< the contents of standard input
    bool asNobody = false; ///< drops root's rights first, if there are any
};

/// Runs a command and waits for its end.
ProcessResult runProcess(std::vector<std::string> command, const ProcessOptions &options = {});

/// Runs @p work in a forked process and returns its result (0 to 127).
int runForked(const std::function<int()> &work);

/// As runForked(), without root's rights.
int runAsNobody(const std::function<int()> &work);
