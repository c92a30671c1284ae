// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/MXFileSystemObject.h>

#include <optional>

#include <QByteArray>

/// A file item that knows the checksum of its contents. Its folder, and the items in it, are of
/// this class as well.
class ChecksumItem : public MWCore::MXFileSystemObject {
public:
    using Ptr = QExplicitlySharedDataPointer<ChecksumItem>;

    /// The folder at @p path with what is in it. Null, with the cause in @p error, when it cannot
    /// be listed: errFSNotAFolder when it is no folder.
    [[nodiscard]] static Ptr folderAt(const QString &path, MWCore::OSStatus *error);

    /// @p item, which this class made: one of a folder that folderAt() listed.
    [[nodiscard]] static Ptr from(const MWCore::MXFileSystemObject::Ptr &item);

    /// SHA-256 (FIPS 180-4) in hexadecimal digits; read at the first call and then kept. Nothing
    /// for what is no plain file or cannot be read.
    [[nodiscard]] std::optional<QByteArray> checksum() const;

protected:
    /// This is all it takes: the listing makes its objects with it.
    [[nodiscard]] MWCore::MXFileSystemObject::Ptr alloc() const override;

private:
    ChecksumItem() = default;

    mutable std::optional<QByteArray> checksum_;
};
