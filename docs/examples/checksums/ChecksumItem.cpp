// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "ChecksumItem.h"

#include <MWCore/FileSystemText.h>

#include <QCryptographicHash>
#include <QFile>

#include <fcntl.h>

using namespace MWCore;

ChecksumItem::Ptr ChecksumItem::folderAt(const QString &path, OSStatus *error) {
    const ChecksumItem prototype;
    const auto item = newFSOForLocalPath(path, error, &prototype);
    if (!item)
        return {};
    *error = item->isDir() ? item->contentsError() : errFSNotAFolder;
    return *error == noErr ? from(item) : Ptr();
}

ChecksumItem::Ptr ChecksumItem::from(const MXFileSystemObject::Ptr &item) {
    return Ptr(static_cast<ChecksumItem *>(item.data()));
}

std::optional<QByteArray> ChecksumItem::checksum() const {
    // Not isFile(), which is false for aliases and applications even if they are plain files.
    if (checksum_ || !mfs_fso_isFile(cstruct()))
        return checksum_;
    // Not opened by QFile, whose names cannot have invalid UTF-8 bytes.
    const auto path = fileSystemRepresentation(completePath());
    const int descriptor =
        path ? open(path->constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC) : -1;
    QFile file;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (descriptor >= 0 && file.open(descriptor, QIODevice::ReadOnly, QFile::AutoCloseHandle) &&
        hash.addData(&file))
        checksum_ = hash.result().toHex();
    return checksum_;
}

MXFileSystemObject::Ptr ChecksumItem::alloc() const {
    return MXFileSystemObject::Ptr(new ChecksumItem);
}
