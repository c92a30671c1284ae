// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/CurrentUser.h"

#include "platform/foundation/FileSystemText.h"

#include <cerrno>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace MWCore {
namespace {

QString nameOf(uid_t user) {
    std::vector<char> texts(1024);
    passwd entry = {};
    passwd *found = nullptr;
    while (getpwuid_r(user, &entry, texts.data(), texts.size(), &found) == ERANGE)
        texts.resize(texts.size() * 2);
    return stringWithFileSystemRepresentation(found ? found->pw_name : nullptr);
}

} // namespace

QString currentUserName() {
    static const QString name = nameOf(getuid());
    return name;
}

} // namespace MWCore
