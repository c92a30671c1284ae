// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FSRef.h>
#include <MWCore/mwcore_export.h>

#include <cstdint>
#include <memory>
#include <optional>

#include <QByteArray>
#include <QByteArrayView>

namespace MWCore {

/// What a resource fork is opened for.
enum ForkPermission : int8_t { fsRdPerm = 1, fsRdWrPerm = 3 };

/// Gives the item @p name in the folder @p parent an empty resource fork; the item is made as an
/// empty file if nothing is there. dupFNErr when it has a fork already. @p newRef, which may be
/// null, then refers to the item.
[[nodiscard]] MWCORE_EXPORT OSStatus FSCreateResFile(const FSRef &parent, const QByteArray &name,
                                                     FSRef *newRef);

/// The open resource fork of an item, as it was then. Changes are made all at once by close(), to
/// the fork as it is by that time, and lost without it. Belongs to one thread.
class MWCORE_EXPORT ResourceFile {
public:
    /// Null on failure, with the cause in @p status: resFNotFound when the item has no fork,
    /// mapReadErr when it is damaged.
    [[nodiscard]] static std::unique_ptr<ResourceFile>
    open(const FSRef &ref, ForkPermission permission, OSStatus *status);

    ResourceFile(const ResourceFile &) = delete;
    ResourceFile &operator=(const ResourceFile &) = delete;
    ~ResourceFile();

    /// The data of the resource @p type (a four-character code) @p id; nothing when there is none.
    [[nodiscard]] std::optional<QByteArray> getResource(uint32_t type, int16_t id) const;

    /// The data of the first resource of @p type; nothing when there is none.
    [[nodiscard]] std::optional<QByteArray> getFirstResource(uint32_t type) const;

    /// Adds a resource, in place of one of the same type and id. An empty @p name means none; of a
    /// longer one 255 bytes are kept. permErr when the fork is open for reading alone.
    [[nodiscard]] OSStatus addResource(uint32_t type, int16_t id, const QByteArray &name,
                                       const QByteArray &data);

    /// resNotFound when there is none, permErr as above.
    [[nodiscard]] OSStatus removeResource(uint32_t type, int16_t id);

    /// Writes what was changed; a fork that lost its last resource goes. On failure the old fork
    /// stands, and closing may be tried again.
    [[nodiscard]] OSStatus close();

private:
    struct Fork;
    explicit ResourceFile(std::unique_ptr<Fork> fork);

    [[nodiscard]] QByteArray edited(QByteArrayView fork, OSStatus *status) const;

    std::unique_ptr<Fork> fork_;
};

} // namespace MWCore
