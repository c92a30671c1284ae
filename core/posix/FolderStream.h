// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>
#include <memory>

#include <dirent.h>

namespace MWCore {

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
