// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <QByteArray>

/// What a fuzz target is: called with any input, always returns 0.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size);

/// The input, where the operation under test wants it whole.
inline QByteArray inputBytes(const uint8_t *data, std::size_t size) {
    return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
}

/// Ends the program, which makes the input a finding.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}
