// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/ItemMimeType.h"

#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/launch/MimeTypesByName.h"

#include <QMimeDatabase>
#include <QMimeType>
#include <QStringList>

namespace MWCore {

// Does not let the database open the file: the local encoding may not be able to represent its
// name. Does not let it match a name again that it does not know, which takes longer than all else.
QString mimeTypeOfFile(const QByteArray &path) {
    const QString name = stringWithFileSystemRepresentation(PathParts(path).name);
    const QStringList byName = mimeTypesByName(name);
    if (byName.size() == 1)
        return byName.front();
    constexpr int64_t kEnough = 16'384; // the database's magic rules look no farther
    OSStatus status = noErr;
    const QMimeDatabase database;
    if (const auto start = readStartOf(path, kEnough, FinalLink::Keep, &status))
        return (byName.isEmpty() ? database.mimeTypeForData(*start)
                                 : database.mimeTypeForFileNameAndData(name, *start))
            .name();
    return byName.isEmpty() ? QStringLiteral("application/octet-stream") : byName.front();
}

} // namespace MWCore
