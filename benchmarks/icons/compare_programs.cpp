// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/icons/compare.h"
#include "benchmarks/icons/imagemagick.h"
#include "benchmarks/support/check.h"
#include "benchmarks/support/processes.h"
#include "icons/IconFamily.h"

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace compare {
namespace {

using processes::Contender;
using processes::MeasuredBy;
using processes::Run;

constexpr int kRounds = 15;

/// A command for the shell, to which the folder's path is appended as $0.
Contender shell(const char *what, const std::string &command) {
    return {what, {"sh", "-ec", "cd \"$0\"; " + command}, MeasuredBy::Caller};
}

void printTable(const char *title, const std::vector<Contender> &contenders,
                const std::filesystem::path &folder) {
    const std::vector<Run> runs = processes::mediansInTurn(contenders, folder, {kRounds});
    const Run &last = runs.back();
    std::printf("\n| %s | ms | this row / last row | CPU ms | this row / last row |\n"
                "|---|---:|---:|---:|---:|\n",
                title);
    for (std::size_t index = 0; index < contenders.size(); ++index)
        std::printf("| %s | %.1f | %.2f x | %.1f | %.2f x |\n", contenders[index].what,
                    runs[index].nanoseconds / 1e6, runs[index].nanoseconds / last.nanoseconds,
                    runs[index].processorNanoseconds / 1e6,
                    runs[index].processorNanoseconds / last.processorNanoseconds);
    std::fflush(stdout);
}

/// The number of files in a folder, and their length.
std::pair<long, double> filesIn(const std::filesystem::path &folder) {
    std::pair<long, double> files;
    for (const auto &file : std::filesystem::directory_iterator(folder)) {
        files.first += 1;
        files.second += double(file.file_size()) / 1e6;
    }
    return files;
}

/// Compares the ways to extract the elements of family.icns in @p folder.
void extractAll(const char *title, const std::filesystem::path &here,
                const std::filesystem::path &folder) {
    for (const char *const target : {"5", "1", "theirs"})
        std::filesystem::create_directory(folder / target);
    const std::string extract = here / "icons_extract";
    printTable(title,
               {{"imageWithAllReps, decoded only", {extract}, MeasuredBy::Caller},
                {"written as PNG, effort 5", {extract, "5"}, MeasuredBy::Caller},
                {"written as PNG, effort 1", {extract, "1"}, MeasuredBy::Caller},
                shell("icns2png -x", "icns2png -x -o theirs family.icns")},
               folder);
    const auto [ourFiles, ours] = filesIn(folder / "5");
    const auto [theirFiles, theirs] = filesIn(folder / "theirs");
    require(ourFiles == theirFiles, "not the same elements were extracted");
    std::printf("\n%ld files: %.1f MB at effort 5, %.1f MB at effort 1, %.1f MB by icns2png.\n",
                ourFiles, ours, filesIn(folder / "1").second, theirs);
    std::fflush(stdout);
}

/// Copies @p family without the elements that icns2png does not know.
void copyKnown(const std::filesystem::path &family, const std::filesystem::path &copy) {
    using namespace MWCore;
    const auto whole = IconFamily::initWithContentsOfFile(QString::fromStdString(family));
    require(whole.data() != nullptr, "no family");
    IconFamilyHandle known = whole->data();
    for (const uint32_t type :
         {fourCharCode("ic04"), fourCharCode("ic05"), fourCharCode("ic07"), fourCharCode("ic11"),
          fourCharCode("ic12"), fourCharCode("ic13"), fourCharCode("ic14")})
        require(RemoveIconFamilyData(known, type) == noErr, "an element is missing");
    require(IconFamily::initWithData(known)->writeToFile(QString::fromStdString(copy)),
            "a family cannot be written");
}

} // namespace

void building(const std::filesystem::path &here, const std::filesystem::path &folder) {
    // One process makes all sizes, which is the fastest way.
    std::string makeSizes = imageMagick() + " photograph.png";
    std::string makeFamily = "png2icns theirs.icns photograph.png";
    for (const char *const size : {"512", "256", "128", "48", "32", "16"}) {
        const std::string file = std::string(size) + ".png";
        makeSizes +=
            std::string(" '(' +clone -resize ") + size + " -write " + file + " +delete ')'";
        makeFamily += " " + file;
    }
    makeSizes += " null:";
    (void)processes::run(shell("ImageMagick", makeSizes), folder);
    printTable("complete family of a photograph of 1,024 x 1,024",
               {{"IconFamilyBuilder", {here / "icons_build"}, MeasuredBy::Caller},
                shell("png2icns alone, from ready sizes", makeFamily),
                shell("ImageMagick, then png2icns", makeSizes + "; " + makeFamily)},
               folder);
}

void extracting(const std::filesystem::path &here, const std::filesystem::path &folder) {
    const std::filesystem::path png = folder / "png";
    const std::filesystem::path jpeg2000 = folder / "jpeg2000";
    std::filesystem::create_directory(png);
    std::filesystem::create_directory(jpeg2000);
    copyKnown(folder / "ours.icns", png / "family.icns");
    std::filesystem::copy(folder / "theirs.icns", jpeg2000 / "family.icns");
    extractAll("every element of that family that icns2png knows", here, png);
    extractAll("every element of png2icns' family, which holds JPEG 2000", here, jpeg2000);
}

} // namespace compare
