// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <filesystem>

#include <QByteArray>
#include <QFile>
#include <QString>

/// The content of a file of the fuzz targets' corpus.
inline QByteArray corpusFile(const char *name) {
    const auto tests = std::filesystem::path(__FILE__).parent_path().parent_path().parent_path();
    QFile file(QString::fromStdString(tests / "fuzz" / "corpus" / name));
    (void)file.open(QIODevice::ReadOnly);
    return file.readAll();
}
