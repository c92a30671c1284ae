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

/// The chosen stream, or one of two values that no stream has. Ready before any constructor runs.
constexpr std::uintptr_t kStandardOutput = 0;
constexpr std::uintptr_t kNone = 1;
constinit std::atomic<std::uintptr_t> chosen{kStandardOutput};

FILE *streamOf(std::uintptr_t choice) {
    if (choice == kStandardOutput)
        return stdout;
    return choice == kNone ? nullptr : reinterpret_cast<FILE *>(choice);
}

} // namespace

void trace(const char *format, ...) {
    FILE *const stream = streamOf(chosen.load());
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
    return streamOf(chosen.exchange(stream ? reinterpret_cast<std::uintptr_t>(stream) : kNone));
}
