// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "benchmarks/support/contender.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

/// Lists a folder with QDir and reads from each entry what a record holds, then calls
/// `readMore(QFileInfo)`. Keeps the entries and returns their number.
template <typename Read> long listWithQt(const char *path, QDir::SortFlags order, Read readMore) {
    const QDir folder(QFile::decodeName(path));
    static const QFileInfoList entries = folder.entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, order);
    for (const QFileInfo &entry : entries) {
        contender::use(entry.fileName());
        contender::use(entry.size());
        contender::use(entry.owner());
        contender::use(entry.group());
        contender::use(entry.permissions());
        contender::use(entry.lastModified());
        if (entry.isSymLink())
            contender::use(entry.symLinkTarget());
        readMore(entry);
    }
    return static_cast<long>(entries.size());
}
