// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"
#include "icons/IconFamilyReport.h"
#include "platform/formats/BigEndian.h"
#include "platform/pictures/Png.h"
#include "tests/icons/IconReaders.h"
#include "tests/icons/pictures.h"
#include "tests/support/Process.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>
#include <QImageWriter>

using namespace MWCore;

namespace {

/// The elements that png2icns writes and their sizes.
constexpr std::pair<const char *, int> kPng2icnsElements[] = {
    {"is32", 16},  {"il32", 32},  {"ih32", 48},   {"it32", 128},
    {"ic08", 256}, {"ic09", 512}, {"ic10", 1024},
};

constexpr std::pair<const char *, int> kQtElements[] = {
    {"icp4", 16},  {"icp5", 32},  {"icp6", 64},   {"ic07", 128},
    {"ic08", 256}, {"ic09", 512}, {"ic10", 1024},
};

uint32_t codeOf(const char *type) {
    return *numberAt<uint32_t>(type, 0);
}

QString textOf(const std::string &text) {
    return QString::fromStdString(text);
}

QByteArray contentOf(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return QByteArray::fromStdString(std::string(std::istreambuf_iterator<char>(file), {}));
}

std::string writePng(const TemporaryFolder &folder, const std::string &name, const QImage &image) {
    return folder.write(name, encodePng(image).toStdString());
}

/// The element @p type of the family in the file @p path; null also if the family has a fault.
QImage elementIn(const std::string &path, const char *type) {
    const QByteArray family = contentOf(path);
    const bool isValid = examineIconFamily(family).isValid();
    return isValid ? IconFamily::initWithData(family)->imageOfElement(codeOf(type)) : QImage();
}

TEST(IconWriters, Png2icns) {
    if (!isInstalled("png2icns"))
        GTEST_SKIP() << "png2icns is not installed";
    const TemporaryFolder folder;
    const std::string family = folder.at("family.icns");
    std::vector<std::string> command{"png2icns", family};
    for (const auto &[type, side] : kPng2icnsElements)
        command.push_back(writePng(folder, std::string(type) + ".png", softDisc(side)));
    ASSERT_EQ(runProcess(command).status, 0);
    for (const auto &[type, side] : kPng2icnsElements)
        EXPECT_EQ(elementIn(family, type), softDisc(side)) << type;
}

TEST(IconWriters, Qt) {
    if (!hasQtPlugin())
        GTEST_SKIP() << "Qt's plug-in is not installed";
    const TemporaryFolder folder;
    for (const auto &[type, side] : kQtElements) {
        const std::string family = folder.at(type);
        ASSERT_TRUE(QImageWriter(textOf(family), "icns").write(softDisc(side)));
        EXPECT_EQ(elementIn(family, type), softDisc(side)) << type;
    }
}

/// Its modes become PNG files of every kind.
TEST(IconWriters, Pillow) {
    if (!isPillowInstalled())
        GTEST_SKIP() << "Pillow is not installed";
    for (const std::string mode : {"RGBA", "RGB", "LA", "L", "P", "1", "I;16"}) {
        SCOPED_TRACE(mode);
        const TemporaryFolder folder;
        const std::string family = folder.at("family.icns");
        const std::string output = folder.folder("images");
        const std::string input = writePng(folder, "input.png", softDisc(128));
        ASSERT_TRUE(runPillow({"write", mode, input, family}));
        ASSERT_TRUE(runPillow({"read", family, output, mode == "RGBA" ? "1024" : "256"}));
        int compared = 0;
        for (const auto &image : std::filesystem::directory_iterator(output)) {
            const QImage theirs(textOf(image.path()));
            ASSERT_FALSE(theirs.isNull());
            EXPECT_EQ(elementIn(family, image.path().stem().c_str()),
                      theirs.convertToFormat(QImage::Format_RGBA8888))
                << image.path().stem();
            ++compared;
        }
        EXPECT_EQ(compared, mode == "RGBA" ? 8 : 5);
    }
}

/// ImageMagick 6 does not know the format and writes the picture under the name instead.
TEST(IconWriters, ImageMagick) {
    const char *const program = isInstalled("magick") ? "magick" : "convert-im6.q16";
    if (!isInstalled(program))
        GTEST_SKIP() << "ImageMagick is not installed";
    const TemporaryFolder folder;
    const std::string family = folder.at("family.icns");
    runProcess({program, writePng(folder, "input.png", softDisc(128)), family});
    EXPECT_EQ(examineIconFamily(contentOf(family)).isValid(), contentOf(family).startsWith("icns"));
}

/// JPEG 2000 as old families hold it, in files and bare codestreams.
TEST(IconWriters, OpenJpeg) {
    if (!isInstalled("opj_compress"))
        GTEST_SKIP() << "opj_compress is not installed";
    const TemporaryFolder folder;
    const struct {
        const char *element;
        int side;
        const char *file;
        const char *ratio; ///< of compression
    } rows[] = {{"ic08", 256, "lossless.j2k", "1"},
                {"ic09", 512, "lossless.jp2", "1"},
                {"ic10", 1024, "lossy.jp2", "20"}};
    for (const auto &[element, side, name, ratio] : rows) {
        SCOPED_TRACE(element);
        const std::string input = writePng(folder, "input.png", softDisc(side));
        const std::string file = folder.at(name);
        const std::string output = folder.at("output.png");
        ASSERT_EQ(runProcess({"opj_compress", "-i", input, "-o", file, "-r", ratio}).status, 0);
        ASSERT_EQ(runProcess({"opj_decompress", "-i", file, "-o", output}).status, 0);
        QByteArray family;
        ASSERT_EQ(SetIconFamilyData(family, codeOf(element), contentOf(file)), noErr);
        EXPECT_EQ(IconFamily::initWithData(family)->imageOfElement(codeOf(element)),
                  QImage(textOf(output)).convertToFormat(QImage::Format_RGBA8888));
    }
}

} // namespace
