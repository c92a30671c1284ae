// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"

#include <cstddef>
#include <iterator>
#include <memory>

#include <dirent.h>

namespace MWCore {

/// A block of entries of an open folder, read with getdents64(2), which saves allocating a DIR for
/// each folder. Any thread, one at a time.
class FolderBlock {
public:
    FolderBlock();

    enum class Outcome {
        AllRead, ///< or the folder was removed meanwhile
        MoreLeft,
        Failed, ///< status() says why; the block holds the entries read before
    };

    /// Replaces the entries with the next ones of the open folder @p folder. If several threads
    /// fill their own blocks from one descriptor, each entry goes to one of them.
    [[nodiscard]] Outcome fill(int folder);

    /// The same with the first entries of the folder.
    [[nodiscard]] Outcome fillFromStart(int folder);

    /// Why filling failed the last time; noErr if it did not.
    [[nodiscard]] OSStatus status() const { return status_; }

    /// The entries other than "." and "..".
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = dirent64;
        using difference_type = std::ptrdiff_t;
        using pointer = const dirent64 *;
        using reference = const dirent64 &;

        Iterator(const char *at, const char *end) : at_(at), end_(end) { skipDots(); }
        const dirent64 &operator*() const { return *reinterpret_cast<const dirent64 *>(at_); }
        Iterator &operator++() {
            advance();
            skipDots();
            return *this;
        }
        friend bool operator==(const Iterator &one, const Iterator &other) {
            return one.at_ == other.at_;
        }

    private:
        void advance() { at_ += (**this).d_reclen; }
        void skipDots() {
            while (at_ != end_ && isDots((**this).d_name))
                advance();
        }
        static bool isDots(const char *name) {
            return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
        }

        const char *at_;
        const char *end_;
    };
    [[nodiscard]] Iterator begin() const { return {bytes_.get(), bytes_.get() + length_}; }
    [[nodiscard]] Iterator end() const { return {bytes_.get() + length_, bytes_.get() + length_}; }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t length_ = 0;
    OSStatus status_ = noErr;
};

} // namespace MWCore
