// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/icons/compare.h"
#include "benchmarks/icons/imagemagick.h"
#include "benchmarks/support/contender.h"
#include "benchmarks/support/processes.h"
#include "benchmarks/support/turns.h"
#include "icons/IconFamily.h"

#include <cstdio>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace compare {
namespace {

using namespace MWCore;

constexpr int kRounds = 31;

using Packer = std::optional<QByteArray>(const BitmapImageRep &, int32_t);
struct PackerRow {
    const char *what;
    Packer *pack;
};
constexpr PackerRow kPackers[] = {
    {"32-bit data", IconFamily::get32BitDataFromBitmapImageRep},
    {"8-bit data", IconFamily::get8BitDataFromBitmapImageRep},
    {"8-bit mask", IconFamily::get8BitMaskFromBitmapImageRep},
    {"1-bit icon and mask", IconFamily::get1BitMaskFromBitmapImageRep},
};

/// How often the work of a round is repeated, so that the clock is exact enough.
constexpr int kRepetitions = 20;

std::function<void()> repeated(const std::function<void()> &work) {
    return [work] {
        for (int repetition = 0; repetition < kRepetitions; ++repetition)
            work();
    };
}

} // namespace

void packers(const QImage &photograph) {
    constexpr int kWidth = 512; // of the largest element that is set from a bitmap
    const BitmapImageRep bitmap = BitmapImageRep::fromImage(
        IconFamily::resampleImage(photograph, kWidth, NSImageInterpolationHigh));
    std::vector<turns::Contender> contenders;
    for (const PackerRow &row : kPackers)
        contenders.push_back({row.what, repeated([&bitmap, &row] {
                                  contender::use(row.pack(bitmap, kWidth)->constData());
                              })});
    contenders.push_back({"memcpy of the bitmap to new memory", repeated([&bitmap] {
                              QByteArray copy(bitmap.bitmapData.size(), Qt::Uninitialized);
                              std::memcpy(copy.data(), bitmap.bitmapData.constData(),
                                          std::size_t(copy.size()));
                              contender::use(copy.constData());
                          })});
    const std::vector<double> times = turns::medians(contenders, kRounds);
    std::printf("\n| packing 512 x 512 RGBA | GB/s of input | ns per pixel | this row / memcpy |\n"
                "|---|---:|---:|---:|\n");
    for (std::size_t index = 0; index < contenders.size(); ++index) {
        const double nanoseconds = times[index] * 1e6 / kRepetitions;
        std::printf("| %s | %.1f | %.2f | %.1f x |\n", contenders[index].what,
                    double(bitmap.bitmapData.size()) / nanoseconds, nanoseconds / (kWidth * kWidth),
                    times[index] / times.back());
    }
    std::fflush(stdout);
}

namespace {

/// One size: this library, Qt, and ImageMagick with and without the work. The latter repeats it in
/// one process, so that the difference is exact enough.
std::vector<double> resamplingTimes(const QImage &photograph, const std::string &file, int width) {
    const std::string size = std::to_string(width);
    std::vector<std::string> without = {imageMagick(), file};
    std::vector<std::string> with = without;
    for (int repetition = 0; repetition < kRepetitions; ++repetition)
        with.insert(with.end(), {"(", "+clone", "-resize", size, "+delete", ")"});
    with.push_back("null:");
    without.push_back("null:");
    const auto scaled = [&photograph, width] {
        contender::use(
            photograph.scaled(width, width, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                .constBits());
    };
    const auto resampled = [&photograph, width] {
        contender::use(
            IconFamily::resampleImage(photograph, width, NSImageInterpolationHigh).constBits());
    };
    constexpr int kFewerRounds = 7;
    std::vector<double> times =
        turns::medians({{"", repeated(resampled)},
                        {"", repeated(scaled)},
                        {"", [&with] { processes::runSilently(with); }},
                        {"", [&without] { processes::runSilently(without); }}},
                       kFewerRounds);
    return {times[0] / kRepetitions, (times[2] - times[3]) / kRepetitions, times[1] / kRepetitions};
}

} // namespace

void resampling(const QImage &photograph, const std::filesystem::path &folder) {
    const std::string file = folder / "photograph.mpc"; // needs no decoding
    processes::runSilently({imageMagick(), folder / "photograph.png", file});
    std::printf(
        "\n| resampling 1,024 x 1,024 | resampleImage, ms | ImageMagick, ms | first / this | "
        "QImage::scaled, ms | first / this |\n|---|---:|---:|---:|---:|---:|\n");
    for (const int width : {512, 128, 32, 16}) {
        const std::vector<double> times = resamplingTimes(photograph, file, width);
        std::printf("| to %d x %d | %.2f | %.2f | %.2f x | %.2f | %.2f x |\n", width, width,
                    times[0], times[1], times[0] / times[1], times[2], times[0] / times[2]);
    }
    std::fflush(stdout);
}

} // namespace compare
