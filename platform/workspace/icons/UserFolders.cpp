// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/UserFolders.h"

#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntryLines.h"
#include "platform/workspace/ResponsiveFiles.h"
#include "platform/workspace/XdgFolders.h"

#include <algorithm>
#include <iterator>

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

} // namespace

const char *userFolderIcon(const QByteArray &path) {
    const QByteArray home = withoutSlashes(homeFolder());
    const QByteArray config = userConfigFolder();
    if (path == home)
        return "user-home folder";
    const auto list = config.isEmpty()
                          ? std::nullopt
                          : ResponsiveFiles().read(pathIn(config, "user-dirs.dirs"), kLongestList);
    DesktopEntryLines lines(list ? QByteArrayView(*list) : QByteArrayView());
    for (DesktopEntryLine line; lines.next(&line);) {
        const auto *const row = std::ranges::find(kPurposeRows, line.key, &PurposeRow::key);
        if (line.kind == DesktopEntryLine::Key && row != std::end(kPurposeRows) &&
            pathOf(
                QByteArrayView(*list).sliced(line.valueBegin, line.end - line.valueBegin).trimmed(),
                home) == path)
            return row->icons;
    }
    return nullptr;
}

} // namespace MWCore
