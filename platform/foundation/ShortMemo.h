// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <utility>

#include <QHash>

namespace MWCore {

/// The results of a slow function whose sources may change, remembered for a short time. Forgets
/// all of them together: a lifetime after the first one, or when there are a thousand. Any thread.
template <typename Key, typename Value, typename Clock = std::chrono::steady_clock>
class ShortMemo {
public:
    static constexpr std::chrono::seconds kLifetime{5};
    static constexpr qsizetype kMost = 1000;

    explicit ShortMemo(typename Clock::duration lifetime = kLifetime) : lifetime_(lifetime) {}

    /// The value of @p key, which `compute()` returns unless it is remembered. Several threads may
    /// compute the same value at once.
    template <typename Compute> [[nodiscard]] Value value(const Key &key, Compute compute) {
        if (auto known = find(key))
            return *std::move(known);
        Value computed = compute();
        insert(key, computed);
        return computed;
    }

private:
    std::optional<Value> find(const Key &key) {
        const std::scoped_lock lock(mutex_);
        if (!values_.isEmpty() && Clock::now() - start_ > lifetime_)
            values_.clear();
        const auto found = values_.constFind(key);
        return found == values_.constEnd() ? std::nullopt : std::optional(*found);
    }

    void insert(const Key &key, const Value &value) {
        const std::scoped_lock lock(mutex_);
        if (values_.size() >= kMost)
            values_.clear();
        if (values_.isEmpty())
            start_ = Clock::now();
        values_.insert(key, value);
    }

    const typename Clock::duration lifetime_;
    std::mutex mutex_;
    QHash<Key, Value> values_;
    typename Clock::time_point start_; ///< when the first value was inserted
};

} // namespace MWCore
