// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArray>
#include <QList>
#include <QString>

#include <sys/types.h>

/// Accounts and groups of the system's users (passwd(5), group(5)). Any thread.
namespace MWCore {

struct UserAccount {
    QByteArray name;
    gid_t group; ///< the primary group
    QByteArray homeFolder;
};

/// The account of @p user; nullopt if there is none.
[[nodiscard]] std::optional<UserAccount> accountOf(uid_t user);

struct UserGroup {
    QByteArray name;
    QList<QByteArray> members; ///< the names of the users whose primary group is another one
};

/// The group @p group; nullopt if there is none.
[[nodiscard]] std::optional<UserGroup> groupOf(gid_t group);

/// The login name of the process's real user, looked up once; null for a user without an account.
[[nodiscard]] QString currentUserName();

} // namespace MWCore
