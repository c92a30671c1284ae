// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <utility>

namespace MWCore {

/// What an operation answers that has two ways to give no value: a null value, and the marker -1
/// in a value's place. Callers test for the marker first.
template <typename Value> class OrMarker {
public:
    [[nodiscard]] static OrMarker marker() { return OrMarker(); }

    OrMarker(Value value) : value_(std::move(value)) {} // NOLINT(google-explicit-constructor)

    [[nodiscard]] bool isMarker() const { return !value_; }

    /// A null value for the marker.
    [[nodiscard]] Value value() const { return value_.value_or(Value()); }

private:
    OrMarker() = default;

    std::optional<Value> value_;
};

} // namespace MWCore
