// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// QDir's list of the folder; reads from each entry what a record holds.
#include "benchmarks/support/contender.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace {

long list(const char *path) {
    const QDir folder(QFile::decodeName(path));
    static const QFileInfoList entries = folder.entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QFileInfo &entry : entries) {
        contender::use(entry.fileName());
        contender::use(entry.size());
        contender::use(entry.owner());
        contender::use(entry.group());
        contender::use(entry.permissions());
        contender::use(entry.lastModified());
        if (entry.isSymLink())
            contender::use(entry.symLinkTarget());
    }
    return static_cast<long>(entries.size());
}

} // namespace

int main(int argumentCount, char **arguments) {
    return contender::run(argumentCount, arguments, list);
}
