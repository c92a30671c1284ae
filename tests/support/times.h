// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

/// Sets the modification time of an item; of a link, not of its target.
inline void setModificationTime(const std::string &path, const timespec &time) {
    const timespec times[2] = {{0, UTIME_OMIT}, time};
    if (utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0)
        throw std::system_error(errno, std::generic_category(), path);
}
