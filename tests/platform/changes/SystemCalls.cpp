// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// The linker puts these functions before those of libc (--wrap).
#include "tests/platform/changes/SystemCalls.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

SystemCalls::Before current;

/// Whether the call is to fail; sets `errno` if so.
bool isRefused(const char *call) {
    if (!current)
        return false;
    const SystemCalls::Before before = std::exchange(current, nullptr); // not for its own calls
    const int error = before(call);
    current = before;
    errno = error ? error : errno;
    return error != 0;
}

} // namespace

SystemCalls::SystemCalls(Before before) {
    current = std::move(before);
}

SystemCalls::~SystemCalls() {
    current = nullptr;
}

#define WRAP(RESULT, FUNCTION, CALL, PARAMETERS, ARGUMENTS)                                        \
    RESULT __real_##FUNCTION PARAMETERS;                                                           \
    RESULT __wrap_##FUNCTION PARAMETERS {                                                          \
        return isRefused(CALL) ? -1 : __real_##FUNCTION ARGUMENTS;                                 \
    }

extern "C" {

WRAP(int, open64, "open", (const char *path, int flags, mode_t mode), (path, flags, mode))
WRAP(int, openat64, (flags & O_TMPFILE) == O_TMPFILE ? "openat without a name" : "openat",
     (int folder, const char *path, int flags, mode_t mode), (folder, path, flags, mode))
WRAP(int, stat64, "stat", (const char *path, struct stat *item), (path, item))
WRAP(int, lstat64, "lstat", (const char *path, struct stat *item), (path, item))
WRAP(int, fstatat64, "fstatat", (int folder, const char *path, struct stat *item, int flags),
     (folder, path, item, flags))
WRAP(int, statx, "statx",
     (int folder, const char *path, int flags, unsigned mask, struct statx *item),
     (folder, path, flags, mask, item))
WRAP(int, faccessat, "faccessat", (int folder, const char *path, int mode, int flags),
     (folder, path, mode, flags))
WRAP(ssize_t, llistxattr, "llistxattr", (const char *path, char *names, size_t size),
     (path, names, size))
WRAP(ssize_t, lgetxattr, "lgetxattr",
     (const char *path, const char *name, void *value, size_t size), (path, name, value, size))
WRAP(int, lsetxattr, "lsetxattr",
     (const char *path, const char *name, const void *value, size_t size, int flags),
     (path, name, value, size, flags))
WRAP(int, lremovexattr, "lremovexattr", (const char *path, const char *name), (path, name))
WRAP(int, linkat, "linkat", (int from, const char *name, int to, const char *newName, int flags),
     (from, name, to, newName, flags))
WRAP(int, renameat2, flags == 0 ? "renameat2" : "renameat2 with flags",
     (int from, const char *name, int to, const char *newName, unsigned flags),
     (from, name, to, newName, flags))
WRAP(int, unlinkat, "unlinkat", (int folder, const char *name, int flags), (folder, name, flags))
WRAP(int, utimensat, "utimensat",
     (int folder, const char *name, const struct timespec times[2], int flags),
     (folder, name, times, flags))
WRAP(int, ioctl, "ioctl", (int descriptor, unsigned long request, void *argument),
     (descriptor, request, argument))
WRAP(int, flock, "flock", (int descriptor, int operation), (descriptor, operation))
WRAP(int, nanosleep, "nanosleep", (const struct timespec *time, struct timespec *left),
     (time, left))
WRAP(int, fchown, "fchown", (int descriptor, uid_t owner, gid_t group), (descriptor, owner, group))
WRAP(int, fsetxattr, "fsetxattr",
     (int descriptor, const char *name, const void *value, size_t size, int flags),
     (descriptor, name, value, size, flags))
WRAP(ssize_t, write, "write", (int descriptor, const void *bytes, size_t size),
     (descriptor, bytes, size))
WRAP(int, fsync, "fsync", (int descriptor), (descriptor))

} // extern "C"
