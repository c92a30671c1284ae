// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/LookupCache.h"

#include <sys/types.h>

namespace MWCore {

/// User and group names from the system's databases. Each id is looked up once.
class AccountNames {
public:
    /// A copy of the name, or of "Unknown" if the id has none. Returns null and sets `errno` if
    /// memory or descriptors run out, since the id may have a name then.
    [[nodiscard]] Text user(uid_t id) { return name(users_, id, lookUpUser); }
    [[nodiscard]] Text group(gid_t id) { return name(groups_, id, lookUpGroup); }

private:
    using Names = LookupCache<Text>;

    static Text lookUpUser(id_t id);
    static Text lookUpGroup(id_t id);
    static Text name(Names &cache, id_t id, Text (*lookUp)(id_t));

    Names users_;
    Names groups_;
};

} // namespace MWCore
