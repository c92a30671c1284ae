// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <QByteArray>

/// The fuzz target: called with any input, always returns 0.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size);

/// The input as one array.
inline QByteArray inputBytes(const uint8_t *data, std::size_t size) {
    return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
}

/// Aborts unless @p holds, which reports the input as a finding.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}
