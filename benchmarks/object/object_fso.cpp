// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// What a file browser does with this library to show a folder: it makes the objects, removes hidden
// ones, sorts by name, and reads name, date and permissions of each.
#include "benchmarks/support/contender.h"
#include "model/item/MXFileSystemObject.h"
#include "model/text/Regex.h"
#include "platform/foundation/FileSystemText.h"

namespace {

using namespace MWCore;

MXFileSystemObject::Ptr folder;

void removeHidden() {
    folder->invalidateFilteredItems();
    const qsizetype count = folder->totalItems();
    for (qsizetype index = 0; index < count; ++index) {
        const MXFileSystemObject::Ptr child = folder->subitemAtIndex(index);
        if (Regex::isHidden(child->name()))
            child->setIsHidden(true);
    }
    folder->setIsFiltered(true);
}

void readAll() {
    const qsizetype count = folder->totalItems();
    for (qsizetype index = 0; index < count; ++index) {
        const MXFileSystemObject::Ptr child = folder->subitemAtIndex(index);
        contender::use(child->name());
        contender::use(child->date());
        contender::use(child->permissionsAsString());
    }
}

long showFolder(const char *path) {
    folder = MXFileSystemObject::newFSOForLocalPath(stringWithFileSystemRepresentation(path));
    if (!folder)
        return -1;
    contender::endPart("listed, objects made and identified");
    removeHidden();
    contender::endPart("hidden items removed");
    folder->setSortsByAttribute(MXSortAttributeName, MXSortOrderReversed);
    contender::endPart("sorted by name");
    readAll();
    contender::endPart("names, dates and permissions read");
    return static_cast<long>(folder->totalItems());
}

} // namespace

int main(int argumentCount, char **arguments) {
    const int status = contender::run(argumentCount, arguments, showFolder);
    folder.reset();
    contender::endPart("release, not part of the request");
    contender::printParts();
    return status;
}
