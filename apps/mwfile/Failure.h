// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/OSStatus.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace MWCore::mwfile {

/// Why a command failed: one line for standard error.
class Failure : public std::runtime_error {
public:
    /// @p subject is a path or value as the user gave it; printError() escapes it.
    Failure(const std::string &subject, const std::string &reason)
        : std::runtime_error((subject.empty() ? "\"\"" : subject) + ": " + reason) {}

    /// With the system's message for an `errno` value.
    Failure(const std::string &subject, int error) : Failure(subject, std::strerror(error)) {}

    Failure(const std::string &subject, OSStatus status) : Failure(subject, statusText(status)) {}
};

/// An invalid command line.
class UsageFailure : public Failure {
public:
    using Failure::Failure;
};

} // namespace MWCore::mwfile
