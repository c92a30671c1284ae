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

/// Where an item is, or is to be: its folder, opened once, and its name there. Whoever changes an
/// item finds its place first and does everything else relative to the open folder, so that it does
/// not matter what others do to the folders on the way. Copies share the folder. Any thread.
class ItemPlace {
public:
    /// The place of the item at @p path, which need not be there. Links on the way are followed as
    /// openTrustedFolder() says. Nothing on failure, with the cause in @p status: fnfErr when the
    /// folder is not there, permErr when it may not be searched, ioErr without /proc.
    [[nodiscard]] static std::optional<ItemPlace> find(const QByteArray &path, OSStatus *status);

    /// An O_PATH descriptor.
    [[nodiscard]] int folder() const { return folder_->number(); }

    /// "." for the root folder and for one given as "..".
    [[nodiscard]] const QByteArray &name() const { return name_; }

    /// A path that leads through the open folder, for system calls that take nothing else. Holds
    /// as long as this place or a copy lives.
    [[nodiscard]] QByteArray path() const;

    /// Another name in the same folder.
    [[nodiscard]] ItemPlace sibling(const QByteArray &name) const;

    /// What is there, of a link the link itself.
    [[nodiscard]] OSStatus examine(struct stat *item) const;

    /// A descriptor of the folder that can be locked and synced; empty, with the cause in `errno`,
    /// where its names may not be read.
    [[nodiscard]] Descriptor openFolder() const;

private:
    ItemPlace(std::shared_ptr<const Descriptor> folder, QByteArray name)
        : folder_(std::move(folder)), name_(std::move(name)) {}

    std::shared_ptr<const Descriptor> folder_;
    QByteArray name_;
};

} // namespace MWCore
