// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// QDir's list of the folder, sorted by name without regard to case; reads from each entry what a
// file manager shows.
#include "benchmarks/support/contender.h"
#include "benchmarks/support/qt.h"

namespace {

void readMore(const QFileInfo &entry) {
    contender::use(entry.isDir());
    contender::use(entry.isFile());
    contender::use(entry.isHidden());
}

long list(const char *path) {
    return listWithQt(path, QDir::Name | QDir::IgnoreCase, readMore);
}

} // namespace

int main(int argumentCount, char **arguments) {
    return contender::run(argumentCount, arguments, list);
}
