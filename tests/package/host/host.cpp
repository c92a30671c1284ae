// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Labels the item at the given path, renames it, and prints the path that its alias resolves to.
#include <MWCore/Aliases.h>
#include <MWCore/Bundle.h>
#include <MWCore/FileCatalogue.h>
#include <MWCore/FileLabels.h>
#include <MWCore/FileSystemText.h>
#include <MWCore/FrameworkResources.h>
#include <MWCore/FSSpec.h>
#include <MWCore/Insert.h>
#include <MWCore/LaunchServices.h>
#include <MWCore/MetadataStore.h>
#include <MWCore/MXAlias.h>
#include <MWCore/MXAssertionHandler.h>
#include <MWCore/MXNotificationCenter.h>
#include <MWCore/ResourceFile.h>
#include <MWCore/UserDefaults.h>

#include <cstdio>

using namespace MWCore;

namespace {

bool label(const char *path, int number) {
    FSRef item;
    FSCatalogInfo info;
    if (FSPathMakeRef(path, &item) != noErr ||
        FSGetCatalogInfo(item, kFSCatInfoFinderInfo, &info) != noErr)
        return false;
    info.finderInfo.setLabelNumber(number);
    return FSSetCatalogInfo(item, kFSCatInfoFinderInfo, info) == noErr;
}

} // namespace

int main(int count, char **arguments) {
    if (count != 2 || !label(arguments[1], 6))
        return 1;
    const QString path = stringWithFileSystemRepresentation(arguments[1]);
    const MXAlias::Ptr alias = MXAlias::aliasWithPath(path);
    if (!alias || std::rename(arguments[1], qPrintable(path + " renamed")) != 0)
        return 1;
    std::puts(qPrintable(MXAlias::aliasWithData(alias->data())->path()));
    return 0;
}
