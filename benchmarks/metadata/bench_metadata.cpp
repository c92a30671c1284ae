// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Measures how long it takes to find out that 100,000 plain files have no Finder information.
// usage: bench_metadata [FILES]
#include "benchmarks/support/benchmark.h"
#include "benchmarks/support/check.h"
#include "benchmarks/support/files.h"
#include "benchmarks/support/TemporaryFolder.h"
#include "benchmarks/support/turns.h"
#include "platform/metadata/MetadataStore.h"

#include <cstdlib>
#include <filesystem>

#include <QList>

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

void check(bool holds) {
    require(holds, "a file has unexpected metadata");
}

void listAttributes(const QList<QByteArray> &paths) {
    char names[1024];
    for (const QByteArray &path : paths)
        check(llistxattr(path.constData(), names, sizeof names) == 0);
}

void listAttributesAndOpen(const QList<QByteArray> &paths, const QList<QByteArray> &sidecars) {
    char names[1024];
    for (qsizetype index = 0; index < paths.size(); ++index) {
        check(llistxattr(paths[index].constData(), names, sizeof names) == 0);
        check(open(sidecars[index].constData(), O_RDONLY | O_CLOEXEC) < 0);
    }
}

void readAll(const QList<QByteArray> &paths, Sidecars sidecars) {
    FinderInfo info;
    for (const QByteArray &path : paths)
        check(readFinderInfo(path, &info, sidecars) == noErr && info.isNone());
}

} // namespace

int main(int argumentCount, char **arguments) {
    return runBenchmark("bench_metadata", [&] {
        const long count = argumentCount > 1 ? std::strtol(arguments[1], nullptr, 10) : 100'000;
        const TemporaryFolder folder;
        QList<QByteArray> paths;
        QList<QByteArray> sidecars;
        for (const fs::path &path : makeFiles(folder.path(), count)) {
            paths.append(path.c_str());
            sidecars.append((folder.path() / ("._" + path.filename().string())).c_str());
        }
        constexpr int kRounds = 15;
        turns::printTable("Finder information, no sidecar in the folder",
                          {{"readFinderInfo", [&] { readAll(paths, Sidecars::Absent); }},
                           {"bare llistxattr", [&] { listAttributes(paths); }}},
                          kRounds);
        turns::printTable(
            "Finder information, sidecars may exist",
            {{"readFinderInfo", [&] { readAll(paths, Sidecars::MayExist); }},
             {"bare llistxattr and open", [&] { listAttributesAndOpen(paths, sidecars); }}},
            kRounds);
    });
}
