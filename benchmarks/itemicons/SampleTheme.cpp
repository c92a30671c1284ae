// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/itemicons/SampleTheme.h"

#include "benchmarks/support/check.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <string>

#include <QColor>
#include <QImage>
#include <QString>

namespace {

namespace fs = std::filesystem;

constexpr const char *kSizes[] = {"16", "32", "48", "128"};
constexpr const char *kKinds[] = {"folder",          "text-x-generic",    "image-x-generic",
                                  "audio-x-generic", "package-x-generic", "application-x-generic"};

void writeIndex(const fs::path &theme) {
    std::ofstream index(theme / "index.theme");
    index << "[Icon Theme]\nName=Sample\nDirectories=16,32,48,128\n";
    for (const char *const size : kSizes)
        index << '[' << size << "]\nSize=" << size << "\nType=Fixed\n";
    check(index.flush().good(), theme.c_str());
}

/// Makes the icon @p name in every size, by links to the one that is drawn.
void makeIcon(const fs::path &theme, const std::string &name) {
    for (const char *const size : kSizes)
        fs::create_hard_link(theme / (std::string(size) + ".png"), theme / size / (name + ".png"));
}

void makeFolders(const fs::path &theme) {
    for (const char *const size : kSizes) {
        fs::create_directories(theme / size);
        QImage image(std::stoi(size), std::stoi(size), QImage::Format_RGBA8888);
        image.fill(Qt::darkGreen);
        require(image.save(QString::fromStdString(theme / (std::string(size) + ".png"))),
                "an icon cannot be written");
    }
}

} // namespace

void makeSampleTheme(const fs::path &folder, long files, ThemeCache cache) {
    makeFolders(folder);
    writeIndex(folder);
    for (const char *const kind : kKinds)
        makeIcon(folder, kind);
    const long icons = files / static_cast<long>(std::size(kSizes));
    for (long number = 0; number < icons; ++number)
        makeIcon(folder, "application-" + std::to_string(number));
    if (cache == ThemeCache::None)
        return;
    fs::copy_file("/usr/share/icons/hicolor/icon-theme.cache", folder / "icon-theme.cache");
    fs::last_write_time(folder / "icon-theme.cache",
                        fs::file_time_type::clock::now() - std::chrono::hours(1));
}
