// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntryLines.h"
#include "platform/workspace/icons/IconFiles.h"
#include "platform/workspace/icons/IconNames.h"
#include "platform/workspace/icons/IconSources.h"
#include "platform/workspace/ResponsiveFiles.h"
#include "platform/workspace/XdgFolders.h"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int64_t kLongestList = 65'536; // bytes; real ones have some 700

struct PurposeRow {
    const char *key;
    const char *icons;
};
constexpr PurposeRow kPurposeRows[] = {
    {"XDG_DESKTOP_DIR", "user-desktop folder"},
    {"XDG_DOCUMENTS_DIR", "folder-documents folder"},
    {"XDG_DOWNLOAD_DIR", "folder-download folder-downloads folder"},
    {"XDG_MUSIC_DIR", "folder-music folder"},
    {"XDG_PICTURES_DIR", "folder-pictures folder"},
    {"XDG_PUBLICSHARE_DIR", "folder-publicshare folder-public folder"},
    {"XDG_TEMPLATES_DIR", "folder-templates folder"},
    {"XDG_VIDEOS_DIR", "folder-videos folder-video folder"},
};

QByteArray withoutSlashes(QByteArray path) {
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path;
}

/// The path in a value, "$HOME/NAME" or "/PATH" in quotes with backslashes before quotes; empty for
/// any other.
QByteArray pathOf(QByteArrayView value, const QByteArray &home) {
    constexpr QByteArrayView kHome = "$HOME";
    if (value.size() < 2 || !value.startsWith('"') || !value.endsWith('"'))
        return {};
    const QByteArrayView quoted = value.sliced(1).chopped(1);
    const bool isInHome = quoted == kHome || quoted.startsWith("$HOME/");
    QByteArray path = isInHome ? home : QByteArray();
    for (qsizetype index = isInHome ? kHome.size() : 0; index < quoted.size(); ++index) {
        const bool isEscape = quoted[index] == '\\' && index + 1 < quoted.size();
        path += quoted[isEscape ? ++index : index];
    }
    return path.startsWith('/') ? withoutSlashes(path) : QByteArray();
}

/// The folders in a list, as it was read last.
struct UserFolders {
    QByteArray list; ///< the path of the list
    QByteArray home;
    uint64_t version = 0; ///< of the list; 0 if that cannot be relied upon
    std::map<QByteArray, const PurposeRow *> purposes;
};

/// Of two lines about one folder, the first one counts.
std::map<QByteArray, const PurposeRow *> purposesIn(QByteArrayView list, const QByteArray &home) {
    std::map<QByteArray, const PurposeRow *> purposes;
    DesktopEntryLines lines(list);
    for (DesktopEntryLine line; lines.next(&line);) {
        const auto *const row = std::ranges::find(kPurposeRows, line.key, &PurposeRow::key);
        if (line.kind == DesktopEntryLine::Key && row != std::end(kPurposeRows))
            purposes.emplace(
                pathOf(list.sliced(line.valueBegin, line.end - line.valueBegin).trimmed(), home),
                row);
    }
    return purposes;
}

/// The version of the list; 0 for a link, whose target may change, and for a list that was written
/// just now, as the same moment may see it written again.
uint64_t versionOfList(const QByteArray &path) {
    struct stat item = {};
    timespec now = {};
    if (lstat(path.constData(), &item) != 0)
        return 1; // there is none
    clock_gettime(CLOCK_REALTIME, &now);
    constexpr time_t kMoment = 2; // seconds
    const bool isOld = item.st_ctim.tv_sec + kMoment < now.tv_sec;
    return S_ISREG(item.st_mode) && isOld ? versionOf(item) : 0;
}

/// What was read last, for all threads.
struct Known {
    std::mutex mutex;
    std::shared_ptr<const UserFolders> folders; ///< null until they are needed

    [[nodiscard]] std::shared_ptr<const UserFolders> get() {
        const std::scoped_lock lock(mutex);
        return folders;
    }
    void set(std::shared_ptr<const UserFolders> next) {
        const std::scoped_lock lock(mutex);
        folders.swap(next);
    }
};

/// Reads the list only if it may have changed since the last call.
std::shared_ptr<const UserFolders> currentUserFolders(const QByteArray &home) {
    static auto *const known = new Known; // never freed: threads may outlive main()
    const QByteArray config = userConfigFolder();
    const QByteArray list = config.isEmpty() ? config : pathIn(config, "user-dirs.dirs");
    const uint64_t version = versionOfList(list);
    auto folders = known->get();
    const bool isCurrent = folders && version != 0 && folders->version == version &&
                           folders->list == list && folders->home == home;
    if (isCurrent)
        return folders;
    const auto bytes = list.isEmpty() ? std::nullopt : ResponsiveFiles().read(list, kLongestList);
    folders = std::make_shared<const UserFolders>(
        UserFolders{list, home, version, purposesIn(bytes.value_or(QByteArray()), home)});
    known->set(folders);
    return folders;
}

} // namespace

void addUserFolderIcon(const IconItem &item, IconRef &icon) {
    const QByteArray home = withoutSlashes(homeFolder());
    const auto folders = currentUserFolders(home);
    for (const QByteArray &each : {item.link, item.path}) {
        const QByteArray path = withoutSlashes(each);
        const auto found = folders->purposes.find(path);
        if (path.isEmpty())
            continue;
        if (path == home)
            icon = themeIcon("user-home folder", kFolderDrawing);
        else if (found != folders->purposes.end())
            icon = themeIcon(found->second->icons, kFolderDrawing);
    }
}

} // namespace MWCore
