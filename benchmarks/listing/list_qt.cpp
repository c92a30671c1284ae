// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// QDir's list of the folder; reads from each entry what a record holds.
#include "benchmarks/support/contender.h"
#include "benchmarks/support/qt.h"

namespace {

long list(const char *path) {
    return listWithQt(path, QDir::Unsorted, [](const QFileInfo &) {});
}

} // namespace

int main(int argumentCount, char **arguments) {
    return contender::run(argumentCount, arguments, list);
}
