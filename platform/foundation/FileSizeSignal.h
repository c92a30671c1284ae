// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>
#include <csignal>
#include <ctime>

namespace MWCore {

/// Blocks SIGXFSZ in this thread for its lifetime, so that a write beyond the file size limit
/// (setrlimit(2)) fails with EFBIG instead of ending the process. Preserves `errno`.
class FileSizeSignalBlocked {
public:
    FileSizeSignalBlocked() {
        sigemptyset(&signal_);
        sigaddset(&signal_, SIGXFSZ);
        pthread_sigmask(SIG_BLOCK, &signal_, &before_);
    }
    FileSizeSignalBlocked(const FileSizeSignalBlocked &) = delete;
    FileSizeSignalBlocked &operator=(const FileSizeSignalBlocked &) = delete;
    ~FileSizeSignalBlocked() {
        const int error = errno;
        constexpr timespec kNow = {};
        if (!sigismember(&before_, SIGXFSZ)) { // otherwise the host had blocked it
            sigtimedwait(&signal_, nullptr, &kNow);
            pthread_sigmask(SIG_SETMASK, &before_, nullptr);
        }
        errno = error;
    }

private:
    sigset_t signal_{};
    sigset_t before_{};
};

} // namespace MWCore
