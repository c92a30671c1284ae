// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/private/trace.h"

#include "core/mfs_utility.h"

#include <atomic>
#include <cerrno>
#include <cstdarg>

namespace MWCore {
namespace {

std::atomic<FILE *> traceStream{stdout};

} // namespace

void trace(const char *format, ...) {
    FILE *const stream = traceStream.load();
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
    return MWCore::traceStream.exchange(stream);
}
