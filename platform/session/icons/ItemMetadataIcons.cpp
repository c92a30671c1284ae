// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/session/icons/ItemMetadataIcons.h"

#include "platform/files/CurrentMounts.h"
#include "platform/files/FileSystemTypes.h"
#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"
#include "platform/foundation/CoarseClock.h"
#include "platform/session/gio/GioThread.h"
#include "platform/workspace/XdgFolders.h"

#include <chrono>

namespace MWCore {
namespace {

constexpr std::chrono::milliseconds kPatience(250);
constexpr int64_t kSecond = 1'000'000'000; // nanoseconds

QByteArray metadataFolder() {
    const std::vector<QByteArray> folders = dataFolders();
    return folders.empty() ? QByteArray() : pathIn(folders.front(), "gvfs-metadata");
}

/// GIO examines the item itself. One on a file system that does not answer must not hold up the
/// items on others.
GioThread &threadFor(const QByteArray &path) {
    const auto mounts = currentMounts();
    const Mount *const mount = mountOf(path, *mounts);
    if (mount && isLocalFileSystem(mount->type))
        return GioThread::shared();
    static auto *const forOthers = new GioThread; // never freed, as it may be waiting
    return *forOthers;
}

} // namespace

ItemMetadataIcons::ItemMetadataIcons() : folder_(metadataFolder()), home_(homeFolder()) {
    GioThread::shared().start(connectToMetadata);
}

std::shared_ptr<const CustomIconNames> ItemMetadataIcons::names() {
    const int64_t now = coarseTime(CLOCK_MONOTONIC_COARSE);
    const std::scoped_lock lock(mutex_);
    if (now < nextCheck_)
        return names_;
    nextCheck_ = now + kSecond;
    if (!names_ || !names_->isCurrent())
        names_ = std::make_shared<const CustomIconNames>(folder_);
    return names_;
}

std::optional<DesktopIcon> ItemMetadataIcons::lookUp(const QByteArray &path) {
    const qsizetype nameBegin = path.lastIndexOf('/') + 1;
    if (path != home_ && !names()->mayInclude(QByteArrayView(path).sliced(nameBegin)))
        return std::nullopt;
    const auto found = std::make_shared<std::optional<DesktopIcon>>();
    const bool isDone =
        threadFor(path).run([found, path] { *found = readMetadataIcon(path); }, kPatience);
    return isDone ? *found : std::nullopt;
}

} // namespace MWCore
