// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/AccountNames.h"

#include "core/posix/errors.h"

#include <grp.h>
#include <pwd.h>

namespace MWCore {
namespace {

constexpr const char *kUnknown = "Unknown";

/// Retries with a larger buffer until the database record fits.
template <typename Entry, typename Lookup>
Text lookUpName(id_t id, Lookup lookup, char *Entry::*nameField, const char *label) {
    for (std::size_t size = 1024;;) {
        const Text buffer(static_cast<char *>(allocate(size, label)));
        if (!buffer)
            return nullptr;
        Entry entry;
        Entry *found = nullptr;
        const int error = lookup(id, &entry, buffer.get(), size, &found);
        if (isExhaustion(error)) {
            errno = error;
            return nullptr;
        }
        if (error == ERANGE)
            size *= 2;
        else if (error != EINTR)
            return copied(found ? found->*nameField : kUnknown, label);
    }
}

} // namespace

Text AccountNames::lookUpUser(id_t id) {
    return lookUpName<struct passwd>(id, getpwuid_r, &passwd::pw_name, "user name");
}

Text AccountNames::lookUpGroup(id_t id) {
    return lookUpName<struct group>(id, getgrgid_r, &group::gr_name, "group name");
}

Text AccountNames::name(Names &cache, id_t id, Text (*lookUp)(id_t)) {
    if (const Text *const cached = cache.find(id))
        return copied(cached->get(), "account name");
    Text found = lookUp(id);
    if (!found)
        return nullptr;
    Text result = copied(found.get(), "account name");
    cache.remember(id, std::move(found));
    return result;
}

} // namespace MWCore
