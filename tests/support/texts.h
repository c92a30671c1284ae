// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs.h"
#include "core/record_tree.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

/// Copies and frees a text that an operation returned; nullopt for null. Does not free the shared
/// root.
inline std::optional<std::string> takeText(char *text) {
    if (!text)
        return std::nullopt;
    std::string copy = text;
    if (text != mfs_path_root)
        std::free(text);
    return copy;
}

/// A new C string, for operations that take ownership of it.
inline char *fresh(const char *text) {
    return text ? strdup(text) : nullptr;
}

using Tree = MWCore::RecordTree;

inline Tree listed(const std::string &path) {
    return Tree(mfs_fso_get_local_fso(path.c_str()));
}

/// Captures the library's trace lines during its lifetime.
class CapturedTrace {
public:
    CapturedTrace()
        : stream_(open_memstream(&text_, &size_)), before_(mfs_set_trace_stream(stream_)) {}
    CapturedTrace(const CapturedTrace &) = delete;
    CapturedTrace &operator=(const CapturedTrace &) = delete;
    ~CapturedTrace() {
        mfs_set_trace_stream(before_);
        std::fclose(stream_);
        std::free(text_);
    }

    /// The lines since the last call.
    std::string take() {
        std::fflush(stream_);
        std::string text(text_ + taken_, size_ - taken_);
        taken_ = size_;
        return text;
    }

private:
    char *text_ = nullptr;
    std::size_t size_ = 0;
    std::size_t taken_ = 0;
    FILE *stream_;
    FILE *before_;
};
