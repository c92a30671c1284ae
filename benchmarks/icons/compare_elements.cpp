// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/icons/compare.h"
#include "benchmarks/icons/pictures.h"
#include "benchmarks/support/check.h"
#include "benchmarks/support/contender.h"
#include "benchmarks/support/counts.h"
#include "benchmarks/support/processes.h"
#include "benchmarks/support/turns.h"
#include "icons/IconFamily.h"
#include "icons/IconFamilyReport.h"

#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include <QtEndian>

namespace compare {
namespace {

using namespace MWCore;

constexpr int kRounds = 31;

void appendNumber(QByteArray &bytes, uint32_t number) {
    char text[4];
    qToBigEndian(number, text);
    bytes.append(text, sizeof text);
}

/// A family of @p count small elements, each of another type; the last is a mask.
QByteArray familyOf(long count) {
    constexpr uint32_t kFirstType = 0x80000000; // no type that is in use
    const QByteArray payload(256, '\x7F');
    const auto length = uint32_t(8 + payload.size());
    QByteArray family("icns");
    appendNumber(family, 8 + uint32_t(count) * length);
    for (uint32_t index = 0; index < uint32_t(count); ++index) {
        const bool isLast = index + 1 == uint32_t(count);
        appendNumber(family, isLast ? fourCharCode("s8mk") : kFirstType + index);
        appendNumber(family, length);
        family += payload;
    }
    return family;
}

void printElements(long count) {
    const QByteArray bytes = familyOf(count);
    const IconFamily::Ptr family = IconFamily::initWithData(bytes);
    const std::vector<turns::Contender> contenders = {
        {"examined", [&] { require(examineIconFamily(bytes).isValid(), "the family is damaged"); }},
        {"last element read",
         [&] {
             OSStatus status = noErr;
             require(GetIconFamilyData(bytes, fourCharCode("s8mk"), &status).has_value(),
                     "an element is missing");
         }},
        {"imageWithAllReps", [&] { contender::use(family->imageWithAllReps().isNull()); }},
        {"last element replaced", [&] {
             IconFamilyHandle changed = bytes;
             const OSStatus status =
                 SetIconFamilyData(changed, fourCharCode("s8mk"), QByteArray(256, '\0'));
             require(status == noErr, "an element cannot be set");
         }}};
    const std::vector<double> times = turns::medians(contenders, kRounds);
    for (std::size_t index = 0; index < contenders.size(); ++index)
        std::printf("| %s | %s | %.0f | %.1f |\n", counts::withThousands(count).c_str(),
                    contenders[index].what, times[index] * 1e3, times[index] * 1e6 / double(count));
}

} // namespace

void elements() {
    std::printf("\n| elements | | µs | ns per element |\n|---:|---|---:|---:|\n");
    for (const long count : {1'000L, 10'000L, 100'000L})
        printElements(count);
    std::fflush(stdout);
}

namespace {

/// The pixels of @p image as alpha, red, green, blue.
QByteArray argbOf(const QImage &image) {
    QByteArray argb;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            appendNumber(argb, image.pixel(x, y));
    return argb;
}

/// The length of the element 'it32' in @p family, in bytes.
qsizetype lengthIn(const QByteArray &family) {
    for (const IconElementReport &element : examineIconFamily(family).elements)
        if (element.type == fourCharCode("it32"))
            return element.length;
    throw std::runtime_error("a family without 'it32'");
}

void printRunLengths(const char *what, const QImage &image, const std::filesystem::path &folder) {
    const std::string file = folder / "128.png";
    const std::string theirs = folder / "theirs.icns";
    require(image.save(QString::fromStdString(file)), "a picture cannot be written");
    const QByteArray pixels = argbOf(image);
    QByteArray ours;
    const std::vector<double> times =
        turns::medians({{"", [&] { (void)SetIconFamilyData(ours, fourCharCode("it32"), pixels); }},
                        {"",
                         [&] {
                             processes::runSilently({"png2icns", theirs, file});
                         }}},
                       kRounds);
    const auto written = IconFamily::initWithContentsOfFile(QString::fromStdString(theirs));
    require(written.data() != nullptr, "png2icns wrote no family");
    const qsizetype length = lengthIn(ours);
    const qsizetype theirLength = lengthIn(written->data());
    std::printf("| %s | %lld | %lld | %.2f x | %.2f | %.2f |\n", what, (long long)length,
                (long long)theirLength, double(length) / double(theirLength), times[0], times[1]);
}

} // namespace

void runLengths(const std::filesystem::path &folder) {
    constexpr int kWidth = 128;
    std::printf("\n| compressed pixels of 128 x 128 | bytes | png2icns | first / png2icns | ms | "
                "png2icns, whole process, ms |\n|---|---:|---:|---:|---:|---:|\n");
    printRunLengths("photograph", pictures::photograph(kWidth), folder);
    printRunLengths("drawing", pictures::drawing(kWidth), folder);
    std::fflush(stdout);
}

} // namespace compare
