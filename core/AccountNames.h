// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/SeenTable.h"

#include <sys/types.h>

namespace MWCore {

/// Names of users and groups from the system's databases, each id asked for once.
class AccountNames {
public:
    /// A fresh copy of the name, "Unknown" where there is none. Null, with the cause in `errno`,
    /// when memory or descriptors run out: then nobody knows whether there is one.
    [[nodiscard]] Text user(uid_t id) { return name(users_, id, askForUser); }
    [[nodiscard]] Text group(gid_t id) { return name(groups_, id, askForGroup); }

private:
    using Names = SeenTable<Text>;

    static Text askForUser(id_t id);
    static Text askForGroup(id_t id);
    static Text name(Names &seen, id_t id, Text (*ask)(id_t));

    Names users_;
    Names groups_;
};

} // namespace MWCore
