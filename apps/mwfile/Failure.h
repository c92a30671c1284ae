// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/OSStatus.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace MWCore::mwfile {

/// Why a command could not do what it was asked: one line for standard error.
class Failure : public std::runtime_error {
public:
    /// @p subject is a path or value as given; it is made fit for a terminal when it is printed.
    Failure(const std::string &subject, const std::string &reason)
        : std::runtime_error((subject.empty() ? "\"\"" : subject) + ": " + reason) {}

    /// With the system's own reason for an `errno` value.
    Failure(const std::string &subject, int error) : Failure(subject, std::strerror(error)) {}

    Failure(const std::string &subject, OSStatus status) : Failure(subject, statusText(status)) {}
};

/// A command line that means nothing.
class UsageFailure : public Failure {
public:
    using Failure::Failure;
};

} // namespace MWCore::mwfile
