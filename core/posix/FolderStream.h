// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>

namespace MWCore {

/// The flags for opening a folder to read its names. Never blocks if another kind of item has
/// replaced the folder.
constexpr int kReadFolder = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;

struct CloseFolder {
    void operator()(DIR *folder) const {
        const int error = errno;
        closedir(folder);
        errno = error;
    }
};

/// A folder stream, closed when it goes; closing leaves `errno` alone.
using FolderStream = std::unique_ptr<DIR, CloseFolder>;

} // namespace MWCore
