// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/core/wrapped.h"

#include <cerrno>
#include <cstddef>
#include <ctime>

#include <dirent.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>

// The linker resolves NAME to __wrap_NAME and __real_NAME to NAME.
#if __SIZEOF_POINTER__ == 4
#define REAL_FSTATAT __real___fstatat64_time64
#define WRAP_FSTATAT __wrap___fstatat64_time64
#define REAL_TIME __real___time64
#define WRAP_TIME __wrap___time64
#else
#define REAL_FSTATAT __real_fstatat64
#define WRAP_FSTATAT __wrap_fstatat64
#define REAL_TIME __real_time
#define WRAP_TIME __wrap_time
#endif

namespace {

WrappedLibc *active = nullptr;

/// Whether the current allocation must fail.
bool mustFailAllocation() {
    if (!active || active->allocationsLeft < 0)
        return false;
    if (active->allocationsLeft > 0) {
        --active->allocationsLeft;
        return false;
    }
    if (active->outOfMemory == OutOfMemory::Once)
        active->allocationsLeft = -1;
    return true;
}

} // namespace

WrappedLibc::WrappedLibc() {
    active = this;
}

WrappedLibc::~WrappedLibc() {
    active = nullptr;
}

extern "C" {

void *__real_malloc(std::size_t size);
void *__wrap_malloc(std::size_t size) {
    if (!mustFailAllocation())
        return __real_malloc(size);
    errno = ENOMEM;
    return nullptr;
}

void *__real_realloc(void *block, std::size_t size);
void *__wrap_realloc(void *block, std::size_t size) {
    if (!mustFailAllocation())
        return __real_realloc(block, size);
    errno = ENOMEM;
    return nullptr;
}

std::time_t REAL_TIME(std::time_t *result);
std::time_t WRAP_TIME(std::time_t *result) {
    if (!active || !active->now)
        return REAL_TIME(result);
    return static_cast<std::time_t>(*active->now);
}

dirent *__real_readdir64(DIR *folder);
dirent *__wrap_readdir64(DIR *folder) {
    if (active && active->entriesLeft == 0) {
        errno = EIO;
        return nullptr;
    }
    if (active && active->entriesLeft > 0)
        --active->entriesLeft;
    return __real_readdir64(folder);
}

int REAL_FSTATAT(int folder, const char *path, struct stat *result, int flags);
int WRAP_FSTATAT(int folder, const char *path, struct stat *result, int flags) {
    if (active) {
        ++active->stats;
        const int error = active->statError ? active->statError(path) : 0;
        if (error != 0) {
            errno = error;
            return -1;
        }
    }
    return REAL_FSTATAT(folder, path, result, flags);
}

int __real_getpwuid_r(uid_t, passwd *, char *, std::size_t, passwd **);
int __wrap_getpwuid_r(uid_t id, passwd *entry, char *buffer, std::size_t size, passwd **found) {
    if (active) {
        const auto call = static_cast<std::size_t>(active->userLookups++);
        *found = nullptr;
        if (call < active->lookupErrors.size())
            return active->lookupErrors[call];
    }
    return __real_getpwuid_r(id, entry, buffer, size, found);
}

int __real_getgrgid_r(gid_t, struct group *, char *, std::size_t, struct group **);
int __wrap_getgrgid_r(gid_t id, struct group *entry, char *buffer, std::size_t size,
                      struct group **found) {
    if (active)
        ++active->groupLookups;
    return __real_getgrgid_r(id, entry, buffer, size, found);
}

} // extern "C"
