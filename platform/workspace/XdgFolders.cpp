// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/XdgFolders.h"

#include "platform/files/PathParts.h"
#include "platform/files/UserAccount.h"

#include <unistd.h>

namespace MWCore {
namespace {

/// The absolute paths in the list @p variable, or in @p byDefault if it is unset or empty.
std::vector<QByteArray> listIn(const char *variable, const char *byDefault) {
    const QByteArray given = qgetenv(variable);
    std::vector<QByteArray> folders;
    for (const QByteArray &folder : (given.isEmpty() ? QByteArray(byDefault) : given).split(':'))
        if (folder.startsWith('/'))
            folders.push_back(folder);
    return folders;
}

/// The folder that @p variable names, else @p name in the home folder; empty if that is unknown.
QByteArray userFolder(const char *variable, const char *name) {
    QByteArray given = qgetenv(variable);
    const QByteArray home = homeFolder();
    if (given.startsWith('/'))
        return given;
    return home.isEmpty() ? QByteArray() : pathIn(home, name);
}

std::vector<QByteArray> withUserFolder(const QByteArray &own, std::vector<QByteArray> folders) {
    if (!own.isEmpty())
        folders.insert(folders.begin(), own);
    return folders;
}

} // namespace

QByteArray homeFolder() {
    QByteArray home = qgetenv("HOME");
    if (!home.startsWith('/'))
        home = accountOf(getuid()).value_or(UserAccount()).homeFolder;
    return home.startsWith('/') ? home : QByteArray();
}

QByteArray userDataFolder() {
    return userFolder("XDG_DATA_HOME", ".local/share");
}

QByteArray userConfigFolder() {
    return userFolder("XDG_CONFIG_HOME", ".config");
}

QByteArray userCacheFolder() {
    return userFolder("XDG_CACHE_HOME", ".cache");
}

std::vector<QByteArray> dataFolders() {
    return withUserFolder(userDataFolder(), listIn("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
}

std::vector<QByteArray> configFolders() {
    return withUserFolder(userConfigFolder(), listIn("XDG_CONFIG_DIRS", "/etc/xdg"));
}

} // namespace MWCore
