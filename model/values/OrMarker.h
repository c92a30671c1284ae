// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <utility>

namespace MWCore {

/// The result of an operation that may return a null value or, as a second kind of missing value,
/// a marker. Callers test for the marker first.
template <typename Value> class OrMarker {
public:
    [[nodiscard]] static OrMarker marker() { return OrMarker(); }

    OrMarker(Value value) : value_(std::move(value)) {} // NOLINT(google-explicit-constructor)

    [[nodiscard]] bool isMarker() const { return !value_; }

    /// The value; a null value if this is the marker.
    [[nodiscard]] Value value() const { return value_.value_or(Value()); }

private:
    OrMarker() = default;

    std::optional<Value> value_;
};

} // namespace MWCore
