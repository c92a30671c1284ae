// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArray>
#include <QString>

#include <sys/types.h>

/// Accounts of the system's users (passwd(5)). Any thread.
namespace MWCore {

struct UserAccount {
    QByteArray name;
    gid_t group; ///< the primary group
    QByteArray homeFolder;
};

/// The account of @p user; nullopt if there is none.
[[nodiscard]] std::optional<UserAccount> accountOf(uid_t user);

/// The login name of the process's real user, looked up once; null for a user without an account.
[[nodiscard]] QString currentUserName();

} // namespace MWCore
