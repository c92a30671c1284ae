// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/allocation.h"

#include <cstdint>
#include <new>
#include <type_traits>
#include <utility>

namespace MWCore {

/// A cache from numbers to values: an open-addressing hash table that grows and never evicts. If
/// memory runs out, it caches less.
template <typename Value> class LookupCache {
public:
    LookupCache() = default;
    LookupCache(const LookupCache &) = delete;
    LookupCache &operator=(const LookupCache &) = delete;
    ~LookupCache() { release(); }

    /// The value cached for @p key, or null. Valid until the next remember().
    [[nodiscard]] const Value *find(int64_t key) const {
        if (!slots_)
            return nullptr;
        const Slot &slot = slotFor(key);
        return slot.used ? &slot.value : nullptr;
    }

    /// Stores @p value for @p key, replacing an earlier one. Does nothing if memory runs out.
    void remember(int64_t key, Value value) {
        if (count_ * 2 < capacity_ || grow())
            put(key, std::move(value));
    }

private:
    struct Slot {
        int64_t key = 0;
        bool used = false;
        Value value{};
    };

    [[nodiscard]] Slot &slotFor(int64_t key) const {
        // Fibonacci hashing: consecutive keys land far apart.
        auto index = static_cast<std::size_t>(
            (static_cast<uint64_t>(key) * 0x9E3779B97F4A7C15U) >> 32 & (capacity_ - 1));
        while (slots_[index].used && slots_[index].key != key)
            index = (index + 1) & (capacity_ - 1);
        return slots_[index];
    }

    void put(int64_t key, Value value) {
        Slot &slot = slotFor(key);
        count_ += slot.used ? 0 : 1;
        slot.key = key;
        slot.used = true;
        slot.value = std::move(value);
    }

    [[nodiscard]] bool grow() {
        LookupCache larger;
        larger.capacity_ = capacity_ ? capacity_ * 2 : kFirstCapacity;
        void *const block = allocate(larger.capacity_ * sizeof(Slot), "LookupCache");
        if (!block)
            return false;
        larger.slots_ = static_cast<Slot *>(block);
        for (std::size_t index = 0; index < larger.capacity_; ++index)
            new (larger.slots_ + index) Slot;
        for (std::size_t index = 0; index < capacity_; ++index)
            if (slots_[index].used)
                larger.put(slots_[index].key, std::move(slots_[index].value));
        std::swap(slots_, larger.slots_);
        std::swap(capacity_, larger.capacity_);
        std::swap(count_, larger.count_);
        return true;
    }

    void release() {
        if (!slots_)
            return;
        for (std::size_t index = 0; index < capacity_; ++index)
            slots_[index].~Slot();
        std::free(slots_);
    }

    static constexpr std::size_t kFirstCapacity = 8; ///< a power of two, as are all later ones
    Slot *slots_ = nullptr;
    std::size_t capacity_ = 0;
    std::size_t count_ = 0;
};

} // namespace MWCore
