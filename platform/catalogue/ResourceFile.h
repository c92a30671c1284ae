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

/// The access with which a resource fork is opened.
enum ForkPermission : int8_t { fsRdPerm = 1, fsRdWrPerm = 3 };

/// Gives the item @p name in the folder @p parent an empty resource fork; creates the item as an
/// empty file if nothing is there. dupFNErr if it already has a fork. Sets @p newRef, which may be
/// null, to the item.
[[nodiscard]] MWCORE_EXPORT OSStatus FSCreateResFile(const FSRef &parent, const QByteArray &name,
                                                     FSRef *newRef);

/// The resource fork of an item, as it was when opened. close() applies all changes at once, to the
/// fork as it is by then; without close() they are lost. Belongs to one thread.
class MWCORE_EXPORT ResourceFile {
public:
    /// Null on failure, with the cause in @p status: resFNotFound if the item has no fork,
    /// mapReadErr if the fork is damaged.
    [[nodiscard]] static std::unique_ptr<ResourceFile>
    open(const FSRef &ref, ForkPermission permission, OSStatus *status);

    /// A fork that belongs to no item and cannot be closed, only converted by toBytes().
    [[nodiscard]] static std::unique_ptr<ResourceFile> makeUnattached();

    ResourceFile(const ResourceFile &) = delete;
    ResourceFile &operator=(const ResourceFile &) = delete;
    ~ResourceFile();

    /// The data of the resource @p type (a four-character code) @p id; nullopt if there is none.
    [[nodiscard]] std::optional<QByteArray> getResource(uint32_t type, int16_t id) const;

    /// The data of the first resource of @p type; nullopt if there is none.
    [[nodiscard]] std::optional<QByteArray> getFirstResource(uint32_t type) const;

    /// Adds a resource or replaces the one of the same type and id. An empty @p name means none; a
    /// long one is cut to 255 bytes. permErr if the fork is open for reading only.
    [[nodiscard]] OSStatus addResource(uint32_t type, int16_t id, const QByteArray &name,
                                       const QByteArray &data);

    /// resNotFound if there is none, permErr if the fork is open for reading only.
    [[nodiscard]] OSStatus removeResource(uint32_t type, int16_t id);

    /// The fork with the changes; nullopt if it would be too long.
    [[nodiscard]] std::optional<QByteArray> toBytes() const;

    /// Writes the changes; a fork without any resources is removed. On failure the old fork
    /// remains, and close() can be called again.
    [[nodiscard]] OSStatus close();

private:
    struct Fork;
    explicit ResourceFile(std::unique_ptr<Fork> fork);

    [[nodiscard]] QByteArray edited(QByteArrayView fork, OSStatus *status) const;

    std::unique_ptr<Fork> fork_;
};

} // namespace MWCore
