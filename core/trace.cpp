// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/trace.h"

#include "core/mfs_utility.h"

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>

namespace MWCore {
namespace {

/// The current stream, or one of two values that are not the address of any stream. Initialized
/// before any constructor runs.
constexpr std::uintptr_t kStandardOutput = 0;
constexpr std::uintptr_t kNone = 1;
constinit std::atomic<std::uintptr_t> current{kStandardOutput};

FILE *streamOf(std::uintptr_t value) {
    if (value == kStandardOutput)
        return stdout;
    return value == kNone ? nullptr : reinterpret_cast<FILE *>(value);
}

} // namespace

void trace(const char *format, ...) {
    FILE *const stream = streamOf(current.load());
    if (!stream)
        return;
    const int error = errno;
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stream, format, arguments);
    va_end(arguments);
    errno = error;
}

} // namespace MWCore

FILE *mfs_set_trace_stream(FILE *stream) {
    using namespace MWCore;
    return streamOf(current.exchange(stream ? reinterpret_cast<std::uintptr_t>(stream) : kNone));
}
