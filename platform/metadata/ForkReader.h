// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"
#include "platform/metadata/Sidecar.h"

#include <cstdint>
#include <optional>

#include <QByteArray>

namespace MWCore {

struct ForkAttribute;

/// Reads parts of an item's resource fork, in whichever place keeps it (see docs/metadata.md), so
/// that nobody pays for the length of a fork of which little is needed. Belongs to one thread.
class ForkReader {
public:
    /// The fork of the item at @p path. Nothing on failure, with the cause in @p status:
    /// resFNotFound without one.
    [[nodiscard]] static std::optional<ForkReader> open(const QByteArray &path, OSStatus *status);

    /// Of the whole fork, in bytes.
    [[nodiscard]] uint64_t length() const { return length_; }

    /// The bytes from @p offset on; fewer than @p length where the fork ends before or cannot be
    /// read.
    [[nodiscard]] QByteArray read(uint64_t offset, uint64_t length) const;

    /// The data of the first resource of @p type; nothing where there is none, or one of more than
    /// @p longest bytes.
    [[nodiscard]] std::optional<QByteArray> firstResource(uint32_t type, uint64_t longest) const;

private:
    ForkReader() = default;
    static std::optional<ForkReader> ofAttribute(const QByteArray &path, const ForkAttribute &place,
                                                 OSStatus *status);
    static std::optional<ForkReader> ofSidecar(const QByteArray &path, OSStatus *status);

    QByteArray value_; ///< the whole fork, of an extended attribute
    std::optional<OpenSidecarEntry> sidecar_;
    uint64_t length_ = 0;
};

} // namespace MWCore
