// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>
#include <csignal>
#include <ctime>

namespace MWCore {

/// While this lives, a write beyond the limit for the size of files (setrlimit(2)) fails with
/// EFBIG in this thread instead of ending the process. Leaves `errno` alone.
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
        if (!sigismember(&before_, SIGXFSZ)) { // else it is the host's
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
