// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/UserAccount.h"

#include "platform/foundation/FileSystemText.h"

#include <cerrno>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace MWCore {

std::optional<UserAccount> accountOf(uid_t user) {
    std::vector<char> texts(1024);
    passwd entry = {};
    passwd *found = nullptr;
    while (getpwuid_r(user, &entry, texts.data(), texts.size(), &found) == ERANGE)
        texts.resize(texts.size() * 2);
    if (!found)
        return std::nullopt;
    return UserAccount{entry.pw_name, entry.pw_gid, entry.pw_dir};
}

QString currentUserName() {
    static const auto account = accountOf(getuid());
    return account ? stringWithFileSystemRepresentation(account->name) : QString();
}

} // namespace MWCore
