// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/foundation/OSStatus.h"

#include <memory>
#include <optional>

#include <QByteArray>

struct stat;

namespace MWCore {

/// The place of an item that exists or will be created: its folder, opened once, and its name in
/// it. Code that changes an item finds its place first and does everything else relative to the
/// open folder, so that later changes to the folders on the path do not matter. Copies share the
/// folder. Any thread.
class ItemLocator {
public:
    /// The place of the item at @p path, which need not exist. Links on the path are followed as by
    /// openTrustedFolder(). nullopt on failure, with the cause in @p status: fnfErr if the folder
    /// does not exist, permErr if this process may not search it, ioErr without /proc.
    [[nodiscard]] static std::optional<ItemLocator> find(const QByteArray &path, OSStatus *status);

    /// An O_PATH descriptor.
    [[nodiscard]] int folder() const { return folder_->number(); }

    /// "." if the path is the root folder or ends in "..".
    [[nodiscard]] const QByteArray &name() const { return name_; }

    /// A path through the open folder, for system calls that take only a path. Valid as long as
    /// this place or a copy exists.
    [[nodiscard]] QByteArray path() const;

    /// The place of another name in the same folder.
    [[nodiscard]] ItemLocator sibling(const QByteArray &name) const;

    /// Sets @p item to the status of the item; a link is not followed.
    [[nodiscard]] OSStatus examine(struct stat *item) const;

    /// A descriptor of the folder that can be locked and synced. Empty on failure, with the cause
    /// in @p status, for example if this process may not read the folder.
    [[nodiscard]] Descriptor openFolder(OSStatus *status) const;

private:
    ItemLocator(std::shared_ptr<const Descriptor> folder, QByteArray name)
        : folder_(std::move(folder)), name_(std::move(name)) {}

    std::shared_ptr<const Descriptor> folder_;
    QByteArray name_;
};

} // namespace MWCore
