// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// QDir's list of the folder, sorted by name without regard to case; reads from each entry what a
// file manager shows.
#include "benchmarks/support/contender.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace {

void read(const QFileInfo &entry) {
    contender::use(entry.fileName());
    contender::use(entry.isDir());
    contender::use(entry.isFile());
    contender::use(entry.size());
    contender::use(entry.owner());
    contender::use(entry.group());
    contender::use(entry.permissions());
    contender::use(entry.lastModified());
    contender::use(entry.isHidden());
    if (entry.isSymLink())
        contender::use(entry.symLinkTarget());
}

long list(const char *path) {
    const QDir folder(QFile::decodeName(path));
    static const QFileInfoList entries =
        folder.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                             QDir::Name | QDir::IgnoreCase);
    for (const QFileInfo &entry : entries)
        read(entry);
    return static_cast<long>(entries.size());
}

} // namespace

int main(int argumentCount, char **arguments) {
    return contender::run(argumentCount, arguments, list);
}
