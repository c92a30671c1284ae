// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// usage: checksums FOLDER | (cd FOLDER && sha256sum --check)
// Prints the checksums of the plain files in a folder like sha256sum(1), but does not escape
// newlines and backslashes in names.
#include "ChecksumItem.h"

#include <MWCore/FileSystemText.h>

#include <cstdio>

int main(int count, char **arguments) {
    if (count != 2) {
        std::fputs("usage: checksums FOLDER\n", stderr);
        return 2;
    }
    MWCore::OSStatus error = MWCore::noErr;
    const auto path = MWCore::stringWithFileSystemRepresentation(arguments[1]);
    const auto folder = ChecksumItem::folderAt(path, &error);
    if (!folder) {
        std::fprintf(stderr, "checksums: %s: %s\n", arguments[1], MWCore::statusText(error));
        return 1;
    }
    for (const auto &item : folder->visibleItems())
        if (const auto checksum = ChecksumItem::from(item)->checksum())
            std::printf("%s  %s\n", checksum->constData(), item->cstruct()->name);
    return 0;
}
