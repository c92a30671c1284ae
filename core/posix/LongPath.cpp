// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/posix/LongPath.h"

#include <climits>
#include <cstring>

namespace MWCore {

LongPath::LongPath(const char *path, int start, int (*open)(int, const char *, int, ...))
    : start_(start), rest_(path) {
    if (!path)
        errno = EFAULT;
    while (rest_ && std::strlen(rest_) >= PATH_MAX) {
        const auto *const slash = static_cast<const char *>(memrchr(rest_, '/', PATH_MAX - 1));
        if (!slash) {
            errno = ENAMETOOLONG;
            rest_ = nullptr;
            return;
        }
        char piece[PATH_MAX];
        const auto length = static_cast<std::size_t>(slash - rest_) + 1;
        std::memcpy(piece, rest_, length);
        piece[length] = '\0';
        folder_ = Descriptor(open(folder(), piece, O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!folder_) {
            rest_ = nullptr;
            return;
        }
        rest_ = slash + std::strspn(slash, "/"); // a leading "/" would start at the root folder
        if (*rest_ == '\0')
            rest_ = ".";
    }
}

int LongPath::folder() const {
    return folder_ ? folder_.number() : start_;
}

} // namespace MWCore
