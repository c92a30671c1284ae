// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/ChangeNotification.h"

#include "platform/references/ReferenceLocator.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {

OSStatus FNNotify(const FSRef &folder, FNMessage message) {
    if (message != kFNDirectoryModifiedMessage)
        return paramErr;
    OSStatus status = noErr;
    const auto place = locatorOf(folder, &status);
    struct stat item = {};
    if (place)
        status = place->examine(&item);
    if (status != noErr)
        return status;
    if (!S_ISDIR(item.st_mode))
        return errFSNotAFolder;
    // Both dates, because a change of the access date alone is reported as an access only; and not
    // to what they are, which could undo a change that another program makes meanwhile.
    constexpr const timespec *kNow = nullptr;
    if (utimensat(place->folder(), place->name().constData(), kNow, AT_SYMLINK_NOFOLLOW) == 0)
        return noErr;
    const bool mayNot = errno == EPERM || errno == EACCES || errno == EROFS;
    return mayNot ? noErr : statusFromErrno(errno);
}

} // namespace MWCore
