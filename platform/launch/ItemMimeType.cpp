// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/ItemMimeType.h"

#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/foundation/FileSystemText.h"

#include <QMimeDatabase>

namespace MWCore {

// Does not let the database open the file: the local encoding may not be able to represent its
// name.
QMimeType mimeTypeOfFile(const QByteArray &path) {
    const QMimeDatabase database;
    const QString name = stringWithFileSystemRepresentation(PathParts(path).name);
    const auto byName = database.mimeTypesForFileName(name);
    if (byName.size() == 1)
        return byName.front();
    constexpr int64_t kEnough = 16'384; // the database's magic rules look no farther
    OSStatus status = noErr;
    if (const auto start = readStartOf(path, kEnough, FinalLink::Keep, &status))
        return database.mimeTypeForFileNameAndData(name, *start);
    return byName.isEmpty() ? database.mimeTypeForName("application/octet-stream") : byName.front();
}

} // namespace MWCore
