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

/// Reads parts of an item's resource fork, wherever it is stored (docs/metadata.md), so that a long
/// fork of which little is needed is not read whole. Belongs to one thread.
class ForkReader {
public:
    /// Opens the fork of the item at @p path. nullopt on failure, with the cause in @p status:
    /// resFNotFound if it has none.
    [[nodiscard]] static std::optional<ForkReader> open(const QByteArray &path, OSStatus *status);

    /// The length of the whole fork in bytes.
    [[nodiscard]] uint64_t length() const { return length_; }

    /// The bytes from @p offset on; fewer than @p length if the fork ends before or cannot be read.
    [[nodiscard]] QByteArray read(uint64_t offset, uint64_t length) const;

    /// The whole fork. nullopt on failure, with the cause in @p status: fileBoundsErr if it is
    /// longer than 256 MB.
    [[nodiscard]] std::optional<QByteArray> whole(OSStatus *status) const;

    /// The data of the first resource of @p type; nullopt if there is none or it is longer than
    /// @p longest bytes.
    [[nodiscard]] std::optional<QByteArray> firstResource(uint32_t type, uint64_t longest) const;

private:
    ForkReader() = default;
    static std::optional<ForkReader> ofAttribute(const QByteArray &path, const ForkAttribute &place,
                                                 OSStatus *status);
    static std::optional<ForkReader> ofSidecar(const QByteArray &path, OSStatus *status);

    QByteArray value_; ///< the whole fork, if it is in an extended attribute
    std::optional<OpenSidecarEntry> sidecar_;
    uint64_t length_ = 0;
};

} // namespace MWCore
