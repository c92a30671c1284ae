// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>
#include <utility>

#include <unistd.h>

namespace MWCore {

/// Owns a file descriptor. Closing it leaves `errno` unchanged.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor &&other) noexcept : number_(other.release()) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() {
        if (number_ < 0)
            return;
        const int error = errno;
        close(number_);
        errno = error;
    }

    explicit operator bool() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }
    int release() { return std::exchange(number_, -1); }

private:
    int number_ = -1;
};

} // namespace MWCore
