// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/MXFileSystemObject.h>

#include <optional>

#include <QByteArray>

/// A file item with the checksum of its contents. Its parent and children are of this class as
/// well.
class ChecksumItem : public MWCore::MXFileSystemObject {
public:
    using Ptr = QExplicitlySharedDataPointer<ChecksumItem>;

    /// The folder at @p path with its children. Returns null, with the cause in @p error, if it
    /// cannot be listed: errFSNotAFolder if it is not a folder.
    [[nodiscard]] static Ptr folderAt(const QString &path, MWCore::OSStatus *error);

    /// Casts @p item, which must come from a folder that folderAt() listed.
    [[nodiscard]] static Ptr from(const MWCore::MXFileSystemObject::Ptr &item);

    /// SHA-256 (FIPS 180-4) in hexadecimal digits, cached at the first call. nullopt if the item is
    /// not a plain file or cannot be read.
    [[nodiscard]] std::optional<QByteArray> checksum() const;

protected:
    /// Listings make their objects with this function; nothing else has to be overridden.
    [[nodiscard]] MWCore::MXFileSystemObject::Ptr alloc() const override;

private:
    ChecksumItem() = default;

    mutable std::optional<QByteArray> checksum_;
};
