// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/session/icons/ItemMetadataIcons.h"

#include "platform/files/PathParts.h"
#include "platform/session/gio/GioThread.h"
#include "platform/workspace/XdgFolders.h"

#include <chrono>
#include <ctime>

namespace MWCore {
namespace {

constexpr std::chrono::milliseconds kPatience(250);
constexpr int64_t kSecond = 1'000'000'000; // nanoseconds

int64_t coarseTime() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return now.tv_sec * kSecond + now.tv_nsec;
}

QByteArray metadataFolder() {
    const std::vector<QByteArray> folders = dataFolders();
    return folders.empty() ? QByteArray() : pathIn(folders.front(), "gvfs-metadata");
}

} // namespace

ItemMetadataIcons::ItemMetadataIcons() : folder_(metadataFolder()), home_(homeFolder()) {
    GioThread::shared().start(connectToMetadata);
}

std::shared_ptr<const CustomIconNames> ItemMetadataIcons::names() {
    const int64_t now = coarseTime();
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
        GioThread::shared().run([found, path] { *found = readMetadataIcon(path); }, kPatience);
    return isDone ? *found : std::nullopt;
}

} // namespace MWCore
