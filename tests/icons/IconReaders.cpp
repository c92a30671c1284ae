// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/icons/IconReaders.h"

#include "icons/IconFamily.h"
#include "platform/formats/BigEndian.h"
#include "tests/support/Process.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

#include <QImageReader>

using namespace MWCore;

namespace {

constexpr char kPython[] = "/usr/bin/python3"; // Debian's, which finds its own Pillow

using enum ShownElement::Shown;

// clang-format off
constexpr ShownElement kElements[] = {
    // icns2png, gdk-pixbuf, Qt, Pillow; docs/icons.md has the same table
    {"icm#", {Yes, No,  Yes, No }},
    {"icm4", {Yes, No,  Yes, No }},
    {"icm8", {Yes, No,  Yes, No }},
    {"ics#", {Yes, No,  Yes, No }},
    {"ics4", {Yes, No,  Yes, No }},
    {"ics8", {Yes, No,  Yes, No }},
    {"is32", {Yes, Yes, Yes, Yes}},
    {"ICN#", {Yes, No,  Yes, No }},
    {"icl4", {Yes, No,  Yes, No }},
    {"icl8", {Yes, No,  Yes, No }},
    {"il32", {Yes, Yes, Yes, Yes}},
    {"ich#", {Yes, No,  Yes, No }},
    {"ich4", {Yes, No,  Yes, No }},
    {"ich8", {Yes, No,  Yes, No }},
    {"ih32", {Yes, Yes, Yes, Yes}},
    {"it32", {Yes, Yes, Yes, Yes}},
    {"ic04", {No,  No,  No,  No }},
    {"ic05", {No,  No,  No,  No }},
    {"icsb", {No,  No,  No,  No }},
    {"icsB", {No,  No,  Yes, No }},
    {"sb24", {No,  No,  Yes, No }},
    {"SB24", {No,  No,  Yes, No }},
    {"icp4", {No,  No,  Yes, Yes}},
    {"icp5", {No,  No,  Yes, Yes}},
    {"icp6", {No,  No,  Yes, Yes}},
    {"ic07", {No,  No,  Yes, Yes}},
    {"ic08", {Yes, Yes, Yes, Yes}},
    {"ic09", {Yes, Yes, Yes, Yes}},
    {"ic10", {Yes, No,  Yes, Yes}},
    {"ic11", {No,  No,  Yes, Yes}},
    {"ic12", {No,  No,  Yes, Yes}},
    {"ic13", {No,  No,  Yes, Yes}},
    {"ic14", {No,  No,  Yes, Yes}},
};
// clang-format on

QByteArray textOf(uint32_t type) {
    QByteArray text;
    appendNumber(text, type);
    return text;
}

/// The PNG files in a folder.
std::vector<QImage> imagesIn(const std::string &folder) {
    std::vector<QImage> images;
    for (const auto &file : std::filesystem::directory_iterator(folder))
        images.emplace_back(QString::fromStdString(file.path().string()));
    return images;
}

std::vector<QImage> readByIcns2png(const std::string &family, const TemporaryFolder &scratch) {
    const std::string output = scratch.folder("icns2png");
    runProcess({"icns2png", "-x", "-o", output, family});
    return imagesIn(output);
}

/// The pixels of a GdkPixdata record that is not compressed.
QImage imageOfPixdata(const QByteArray &record) {
    constexpr uint32_t kRgb = 0x01010001;
    constexpr uint32_t kRgba = 0x01010002;
    constexpr qsizetype kHeader = 24; // magic, length, and these:
    const auto type = numberAt<uint32_t>(record, 8);
    const auto bytesPerRow = numberAt<int32_t>(record, 12);
    const auto width = numberAt<int32_t>(record, 16);
    const auto height = numberAt<int32_t>(record, 20);
    if ((type != kRgb && type != kRgba) || !height ||
        record.size() < kHeader + qsizetype(*bytesPerRow) * *height)
        return {};
    const auto *const pixels = reinterpret_cast<const uchar *>(record.constData()) + kHeader;
    const auto format = type == kRgb ? QImage::Format_RGB888 : QImage::Format_RGBA8888;
    return QImage(pixels, *width, *height, *bytesPerRow, format).copy();
}

std::vector<QImage> readByGdkPixbuf(const std::string &family, const TemporaryFolder &scratch) {
    const std::string output = scratch.at("pixdata");
    if (runProcess({"gdk-pixbuf-pixdata", family, output}).status != 0)
        return {};
    std::ifstream file(output, std::ios::binary);
    const std::string record(std::istreambuf_iterator<char>(file), {});
    return {imageOfPixdata(QByteArray::fromStdString(record))};
}

std::vector<QImage> readByQt(const std::string &family, const TemporaryFolder &) {
    QImageReader reader(QString::fromStdString(family), "icns");
    std::vector<QImage> images;
    for (int index = 0; index < reader.imageCount(); ++index) {
        reader.jumpToImage(index);
        images.push_back(reader.read());
    }
    return images;
}

std::vector<QImage> readByPillow(const std::string &family, const TemporaryFolder &scratch) {
    const std::string output = scratch.folder("pillow");
    (void)runPillow({"read", family, output});
    return imagesIn(output);
}

/// The readers do not change a pixel, except that Qt's plug-in multiplies the colours of elements
/// with a mask by alpha.
bool isSame(const QImage &ours, const QImage &theirs) {
    const bool isMultiplied = theirs.format() == QImage::Format_ARGB32_Premultiplied;
    return isMultiplied ? ours.convertToFormat(theirs.format()) == theirs
                        : ours == theirs.convertToFormat(ours.format());
}

} // namespace

const IconReader kIconReaders[kIconReaderCount] = {
    {"Icns2png", readByIcns2png, [] { return isInstalled("icns2png"); },
     IconReader::Shows::EveryImage, 1024},
    {"GdkPixbuf", readByGdkPixbuf, [] { return isInstalled("gdk-pixbuf-pixdata"); },
     IconReader::Shows::OneImage, 512},
    {"Qt", readByQt, hasQtPlugin, IconReader::Shows::EveryImage, 1024},
    {"Pillow", readByPillow, isPillowInstalled, IconReader::Shows::EveryImage, 1024},
};

std::span<const ShownElement> shownElements() {
    return kElements;
}

bool isInstalled(const std::string &program) {
    constexpr int kNotFound = 127;
    return runProcess({program, "--help"}).status != kNotFound;
}

bool isPillowInstalled() {
    return runProcess({kPython, "-c", "import PIL.IcnsImagePlugin"}).status == 0;
}

bool hasQtPlugin() {
    return QImageReader::supportedImageFormats().contains("icns");
}

bool runPillow(const std::vector<std::string> &arguments) {
    const auto script = std::filesystem::path(__FILE__).parent_path() / "pillow.py";
    std::vector<std::string> command{kPython, script.string()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProcess(command).status == 0;
}

void IconReaders::SetUp() {
    if (!reader().isInstalled())
        GTEST_SKIP() << reader().name << " is not installed";
}

bool IconReaders::isShown(uint32_t type) {
    const auto *const row = std::ranges::find_if(
        kElements, [type](const ShownElement &element) { return textOf(type) == element.type; });
    return row != std::end(kElements) && row->shown[GetParam()] == Yes;
}

int IconReaders::expectSameImages(const QByteArray &family) {
    const TemporaryFolder folder;
    const std::string file = folder.write("family.icns", family.toStdString());
    const std::vector<QImage> theirs = reader().read(file, folder);
    std::vector<QImage> ours;
    bool isAnyShown = false;
    for (const auto &[type, image] :
         IconFamily::initWithData(family)->imageWithAllReps().representations) {
        ours.push_back(image);
        if (!isShown(type))
            continue;
        isAnyShown = true;
        EXPECT_TRUE(reader().shows == IconReader::Shows::OneImage ||
                    std::ranges::any_of(theirs, std::bind_front(isSame, image)))
            << textOf(type).constData() << " is not shown";
    }
    EXPECT_EQ(theirs.empty(), !isAnyShown);
    int largest = 0;
    for (const QImage &their : theirs) {
        EXPECT_TRUE(
            std::ranges::any_of(ours, [&their](const QImage &our) { return isSame(our, their); }))
            << "an image of " << their.width() << " pixels is shown otherwise";
        largest = std::max(largest, their.width());
    }
    return largest;
}

std::vector<uint32_t> IconReaders::withMask(uint32_t type) {
    const IconElementType &known = *iconElementType(type);
    std::vector<uint32_t> types{type};
    if (known.mask != 0)
        types.push_back(known.mask);
    if (known.encoding != IconEncoding::Indexed4 && known.encoding != IconEncoding::Indexed8)
        return types;
    for (const IconElementType &other : iconElementTypes())
        if (other.encoding == IconEncoding::Bitmap && other.size == known.size)
            types.push_back(other.type);
    return types;
}
