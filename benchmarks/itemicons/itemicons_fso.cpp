// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// This library: the icon of each child of a folder, drawn; then the icons that the objects keep.
#include "benchmarks/itemicons/measure.h"
#include "model/item/MXFileSystemObject.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/workspace/themes/IconTheme.h"

#include <QCoreApplication>
#include <QImage>

namespace {

using namespace MWCore;

MXFileSystemObject::Ptr folder;

template <typename Work> void forEachChild(Work work) {
    const qsizetype count = folder->totalItems();
    for (qsizetype index = 0; index < count; ++index)
        work(*folder->subitemAtIndex(index));
}

long list(const char *theme, const char *path) {
    IconTheme::setCurrentName(QString::fromUtf8(theme));
    folder = MXFileSystemObject::newFSOForLocalPath(stringWithFileSystemRepresentation(path));
    return folder ? static_cast<long>(folder->totalItems()) : -1;
}

void drawAll() {
    contender::use(folder->subitemAtIndex(0)->iconForFSOUsingCached(false)->image());
    contender::endPart("first icon and image");
    forEachChild([](const MXFileSystemObject &child) {
        contender::use(child.iconForFSOUsingCached(false)->image());
    });
}

void repeat() {
    forEachChild([](const MXFileSystemObject &child) {
        contender::use(child.iconForFSOUsingCached(false));
    });
    contender::endPart("iconForFSOUsingCached(false) again");
    forEachChild(
        [](const MXFileSystemObject &child) { contender::use(child.iconForFSOUsingCached(true)); });
    contender::endPart("iconForFSOUsingCached(true), first call");
    forEachChild(
        [](const MXFileSystemObject &child) { contender::use(child.iconForFSOUsingCached(true)); });
    contender::endPart("iconForFSOUsingCached(true), later calls");
    forEachChild([](const MXFileSystemObject &child) {
        contender::use(child.iconForFSOUsingCached(true)->image());
    });
    contender::endPart("the same with image()");
}

} // namespace

int main(int argumentCount, char **arguments) {
    const QCoreApplication application(argumentCount, arguments);
    return itemicons::run(argumentCount, arguments, list, drawAll, repeat);
}
