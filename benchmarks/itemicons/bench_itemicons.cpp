// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Compares how long this library, Qt, and GIO with GTK take to make and draw the icons of a folder,
// with the themes Adwaita and Breeze, and with a theme of many files.
// usage: bench_itemicons [ITEMS...]
#include "benchmarks/itemicons/SampleHome.h"
#include "benchmarks/itemicons/SampleTheme.h"
#include "benchmarks/support/benchmark.h"
#include "benchmarks/support/check.h"
#include "benchmarks/support/counts.h"
#include "benchmarks/support/processes.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using processes::Run;

constexpr int kRounds = 7;

std::vector<processes::Contender> contendersIn(const fs::path &here, const std::string &theme) {
    using processes::MeasuredBy;
    return {
        {"this library", {here / "itemicons_fso", theme}, MeasuredBy::Itself},
        {"QFileIconProvider", {"xvfb-run", "-a", here / "itemicons_qt", theme}, MeasuredBy::Itself},
        {"GIO and GtkIconTheme", {here / "itemicons_gtk", theme}, MeasuredBy::Itself},
    };
}

void printRow(const char *what, double nanoseconds, double ratio, const Run &run) {
    std::printf("| %s | %.1f | %.2f | %.2f x | %.1f |\n", what, nanoseconds / 1e6,
                nanoseconds / 1e3 / static_cast<double>(run.entries), ratio, run.bytes / 1e6);
}

/// What takes place after the icons were drawn.
void printParts(const Run &run) {
    std::printf("\n| afterwards | ns per item |\n|---|---:|\n");
    for (std::size_t part = 1; part < run.parts.size(); ++part)
        std::printf("| %s | %.0f |\n", run.parts[part].what.c_str(),
                    run.parts[part].nanoseconds / static_cast<double>(run.entries));
}

/// Icons and images of all items, in new processes.
void compareThemes(const fs::path &here, const SampleHome &home) {
    for (const char *const theme : {"Adwaita", "breeze"}) {
        const auto contenders = contendersIn(here, theme);
        const std::vector<Run> runs = processes::mediansInTurn(contenders, home.path(), {kRounds});
        std::printf("\n| %s, %ld items | ms | µs per item | this library / this row | MB |\n"
                    "|---|---:|---:|---:|---:|\n",
                    theme, runs[0].entries);
        for (std::size_t index = 0; index < runs.size(); ++index)
            printRow(contenders[index].what, runs[index].nanoseconds,
                     runs[0].nanoseconds / runs[index].nanoseconds, runs[index]);
        printParts(runs[0]);
        std::fflush(stdout);
    }
}

/// The first icon, for which the theme must be read, and all the others.
void compareFirstUse(const fs::path &here, const SampleHome &home) {
    constexpr long kFiles = 50'000;
    struct Row {
        const char *theme;
        ThemeCache cache;
    };
    for (const Row &row : {Row{"Uncached", ThemeCache::None}, Row{"Dirty", ThemeCache::Outdated}}) {
        makeSampleTheme(home.path() / ".local/share/icons" / row.theme, kFiles, row.cache);
        const auto contenders = contendersIn(here, row.theme);
        const std::vector<Run> runs = processes::mediansInTurn(contenders, home.path(), {kRounds});
        std::printf("\n| %s theme of %s files | first icon, ms | others, µs per item |\n"
                    "|---|---:|---:|\n",
                    row.theme, counts::withThousands(kFiles).c_str());
        for (std::size_t index = 0; index < runs.size(); ++index) {
            const double first = runs[index].parts.at(0).nanoseconds;
            std::printf("| %s | %.1f | %.2f |\n", contenders[index].what, first / 1e6,
                        (runs[index].nanoseconds - first) / 1e3 /
                            static_cast<double>(runs[index].entries));
        }
    }
}

/// All contenders have the same home folder and nothing else that could influence the icons. Qt
/// needs a display and a desktop: without them, all files have the same icon.
void setEnvironment(const SampleHome &home) {
    for (const char *const name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME",
                                   "XDG_DATA_DIRS", "WAYLAND_DISPLAY", "GTK_THEME"})
        unsetenv(name);
    setenv("HOME", home.path().c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("XDG_CURRENT_DESKTOP", "GNOME", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
}

} // namespace

int main(int argumentCount, char **arguments) {
    return runBenchmark("bench_itemicons", [&] {
        const fs::path here = fs::absolute(arguments[0]).parent_path();
        for (const long items : counts::fromArguments(argumentCount, arguments, {10'000})) {
            const SampleHome home(items);
            setEnvironment(home);
            compareThemes(here, home);
            compareFirstUse(here, home);
        }
    });
}
