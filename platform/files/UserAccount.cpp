// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/UserAccount.h"

#include "platform/foundation/FileSystemText.h"

#include <cerrno>
#include <vector>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

namespace MWCore {

namespace {

/// An entry of one of the system's databases, with the texts that it points to.
template <typename Entry> struct Found {
    std::vector<char> texts = std::vector<char>(1024);
    Entry entry = {};
    Entry *result = nullptr; ///< null if there is none

    template <typename Id> Found(int (*lookUp)(Id, Entry *, char *, std::size_t, Entry **), Id id) {
        while (lookUp(id, &entry, texts.data(), texts.size(), &result) == ERANGE)
            texts.resize(texts.size() * 2);
    }
};

} // namespace

std::optional<UserAccount> accountOf(uid_t user) {
    const Found<passwd> found(getpwuid_r, user);
    if (!found.result)
        return std::nullopt;
    return UserAccount{found.entry.pw_name, found.entry.pw_gid, found.entry.pw_dir};
}

std::optional<UserGroup> groupOf(gid_t group) {
    const Found<struct group> found(getgrgid_r, group);
    if (!found.result)
        return std::nullopt;
    UserGroup entry = {found.entry.gr_name, {}};
    for (char **member = found.entry.gr_mem; *member; ++member)
        entry.members += *member;
    return entry;
}

QString currentUserName() {
    static const auto account = accountOf(getuid());
    return account ? stringWithFileSystemRepresentation(account->name) : QString();
}

} // namespace MWCore
