// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/metadata/ExtendedAttributes.h"

#include <algorithm>

namespace MWCore {

/// An extended attribute that holds a resource fork.
struct ForkAttribute {
    const char *name;
    qsizetype trailing; ///< zero bytes after the fork

    /// The length of the fork in a value of @p length bytes; 0 if @p length is negative.
    [[nodiscard]] qsizetype forkLength(qsizetype length) const {
        return std::max<qsizetype>(length - trailing, 0);
    }
};
inline constexpr ForkAttribute kForkAttributes[] = {{"user.com.apple.ResourceFork", 0},
                                                    {"user.org.netatalk.ResourceFork", 0},
                                                    {"user.DosStream.AFP_Resource:$DATA", 1},
                                                    {"user.AFP_Resource", 1}};

/// The first fork attribute among @p names, or null.
inline const ForkAttribute *forkAttribute(const AttributeNames &names) {
    const auto *const found = std::ranges::find_if(
        kForkAttributes, [&names](const char *name) { return names.contains(name); },
        &ForkAttribute::name);
    return found == std::end(kForkAttributes) ? nullptr : found;
}

} // namespace MWCore
