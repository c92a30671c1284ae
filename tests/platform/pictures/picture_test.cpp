// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Picture.h"

#include "platform/pictures/Png.h"
#include "platform/pictures/PngEncoding.h"
#include "platform/pictures/SvgDrawing.h"
#include "tests/platform/pictures/pictures.h"
#include "tests/support/TemporaryFolder.h"

#include <MWCore/TimeBudget.h>

#include <gtest/gtest.h>

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>

namespace {

using namespace MWCore;

constexpr QRgb kLime = 0xFF00FF00;

/// A drawing of 20 x 10 pixels.
QByteArray drawing(const QByteArray &content) {
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
           "viewBox='0 0 20 10'>" +
           content + "</svg>";
}

const QByteArray kBackground = "<rect width='20' height='10' fill='#0F0'/>";

std::optional<Picture> picture(const QByteArray &bytes) {
    OSStatus status = noErr;
    auto read = Picture::fromBytes(bytes, &status);
    EXPECT_EQ(status, read ? noErr : mapReadErr);
    return read;
}

/// The middle of the drawing; 0 if it is refused.
QRgb middleOf(const QByteArray &content) {
    const auto read = picture(drawing(content));
    const QImage image = read ? read->squareImage(40) : QImage();
    return image.isNull() ? 0 : image.pixel(20, 20);
}

TEST(Picture, RendersADrawingInTheMiddle) {
    const auto read = picture(drawing("<rect width='20' height='10' fill='lime'/>"));
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->isVector());
    EXPECT_EQ(read->size(), QSize(20, 10));
    for (const int width : {1, 16, 33, 512}) {
        const QImage image = read->squareImage(width);
        ASSERT_EQ(image.size(), QSize(width, width));
        EXPECT_EQ(image.pixel(width / 2, width / 2), kLime) << width;
        EXPECT_EQ(image.pixel(0, 0), width == 1 ? kLime : 0U);
        EXPECT_EQ(image.format(), QImage::Format_RGBA8888);
    }
    EXPECT_TRUE(read->squareImage(0).isNull());
    EXPECT_TRUE(read->squareImage(Picture::kLargestSide + 1).isNull());
}

/// This process has no QGuiApplication, without which a text aborts it.
TEST(Picture, LeavesOutTexts) {
    EXPECT_EQ(middleOf(kBackground + "<g><text y='9'>W<tspan>W</tspan></text></g>"), kLime);
    EXPECT_EQ(middleOf(kBackground + "<textArea width='20'>W</textArea>"), kLime);
    const QByteArray nested = drawing("<text>W</text>").toBase64();
    EXPECT_EQ(middleOf(kBackground +
                       "<image width='9' height='9' "
                       "xlink:href='data:image/svg+xml;base64," +
                       nested + "'/>"),
              kLime);
}

TEST(Picture, OpensNothingThatADrawingRefersTo) {
    const TemporaryFolder folder;
    QImage red(4, 4, QImage::Format_RGB32);
    red.fill(Qt::red);
    const QByteArray png = encodePng(red);
    const QByteArray image = folder.write("red.png", png.toStdString()).c_str();
    const QByteArray style = folder.write("red.css", "rect{fill:red !important}").c_str();
    for (const QByteArray &reference : {image, "file://" + image, QByteArray("red.png")})
        EXPECT_EQ(middleOf(kBackground + "<image width='20' height='10' xlink:href='" + reference +
                           "'/>"),
                  kLime);
    const QByteArray sheet = "<?xml-stylesheet type='text/css' href='" + style + "'?>";
    const auto styled = picture(sheet + drawing(kBackground));
    ASSERT_TRUE(styled);
    EXPECT_EQ(styled->squareImage(40).pixel(20, 20), kLime);
    // What a drawing contains is drawn.
    EXPECT_EQ(middleOf(kBackground + "<image width='20' height='10' xlink:href='data:;base64," +
                       png.toBase64() + "'/>"),
              0xFFFF0000);
}

/// @p count groups, each of which uses the one before twice.
QByteArray doubled(int count) {
    QByteArray content = "<rect id='a0' width='20' height='10' fill='#0F0'/>";
    for (int number = 1; number <= count; ++number) {
        const QByteArray use = "<use href='#a" + QByteArray::number(number - 1) + "'/>";
        content += "<g id='a" + QByteArray::number(number) + "'>" + use + use + "</g>";
    }
    return content;
}

QByteArray nested(const QByteArray &start, const QByteArray &end, int count) {
    return start.repeated(count) + end.repeated(count);
}

TEST(Picture, RefusesDrawingsThatWouldTakeTooLong) {
    EXPECT_EQ(middleOf(doubled(5)), kLime);
    EXPECT_EQ(middleOf(doubled(60)), 0U);
    EXPECT_EQ(middleOf("<g id='a'><use href='#b'/></g><g id='b'><use href='#a'/></g>"), 0U);
    EXPECT_EQ(middleOf(QByteArray("<g>").repeated(100'000)), 0U);
    EXPECT_FALSE(picture(drawing(kBackground + nested("<x xmlns:a='b'>", "</x>", 100'000))));
    EXPECT_EQ(middleOf("<style>" + QByteArray("a{fill:red}").repeated(5000) + "</style>" +
                       kBackground.repeated(5000)),
              0U);
    const auto entities = [](int count) {
        QByteArray text = "<!DOCTYPE svg [<!ENTITY a0 'xxxxxxxxxx'>";
        for (int number = 1; number <= count; ++number) {
            const QByteArray before = "&a" + QByteArray::number(number - 1) + ";";
            text += "<!ENTITY a" + QByteArray::number(number) + " '" + before.repeated(9) + "'>";
        }
        return text + "]>" + drawing(kBackground + "&a" + QByteArray::number(count) + ";");
    };
    EXPECT_TRUE(picture(entities(1)));
    EXPECT_FALSE(picture(entities(30)));
    const QByteArray entity = "<!DOCTYPE svg [<!ENTITY a '" + QByteArray(4000, 'x') + "'>]>";
    EXPECT_TRUE(picture(entity + drawing(kBackground + QByteArray("&a;").repeated(10))));
    EXPECT_FALSE(picture(entity + drawing(kBackground + QByteArray("&a;").repeated(10'000))));
    EXPECT_FALSE(picture("\x1F\x8B" + drawing(kBackground))) << "compressed";
}

TEST(Picture, WeighsOutlinesByWhatTheyTakeToDraw) {
    const auto used = [](const QByteArray &attributes, int count) {
        return "<path id='a' " + attributes + "/>" + QByteArray("<use href='#a'/>").repeated(count);
    };
    const QByteArray jagged = "d='M0 0" + QByteArray(" L1 9 9 1").repeated(10'000) + "'";
    EXPECT_EQ(middleOf(used(jagged, 1) + kBackground), kLime);
    EXPECT_EQ(middleOf(used(jagged, 1000) + kBackground), 0U);

    const QByteArray rest = kBackground.repeated(1000);
    for (const QByteArray none : {"stroke-dasharray='none'", "style='stroke-dasharray: none'"})
        EXPECT_EQ(middleOf(used(none, 1000) + kBackground), kLime) << none.constData();
    for (const QByteArray dashes : {"stroke-dasharray='.01'", "style='stroke-dasharray:.01'",
                                    "style='stroke-d\\61sharray:1'"}) {
        EXPECT_EQ(middleOf(used(dashes, 1) + rest), kLime) << dashes.constData();
        EXPECT_EQ(middleOf(used(dashes, 1000) + kBackground), 0U) << dashes.constData();
        EXPECT_EQ(middleOf("<g " + dashes + ">" + rest + "</g>"), 0U) << "inherited";
    }
    EXPECT_EQ(middleOf("<style>rect{stroke-dasharray:.01}</style>" + rest), 0U);
}

/// @p count points, each far from the one before.
QByteArray zigzag(int count, int from, int to) {
    QByteArray points;
    for (int index = 0; index < count; ++index)
        points += QByteArray::number(index % 2 ? from : to) + ' ' +
                  QByteArray::number(from + index * 7 % (to - from)) + ' ';
    return points;
}

/// They are drawn smaller and enlarged, or refused if a single pixel takes too long. Without that,
/// each takes many seconds.
TEST(Picture, DrawsEveryDrawingInTime) {
    const QByteArray veil = "<rect width='20' height='10' fill='#0F0' fill-opacity='.5'/>";
    const QByteArray edges = "<path d='M0 0L" + zigzag(10'000, 0, 20) + "'/>";
    const QByteArray far = zigzag(10'000, -100'000, 100'000);
    const struct {
        const char *what;
        QByteArray content;
        bool isDrawn;
    } rows[] = {
        {"fillings", veil.repeated(20'000), true},
        {"fillings by reference",
         "<g id='a'>" + veil.repeated(200) + "</g>" + QByteArray("<use href='#a'/>").repeated(200),
         true},
        {"edges", edges + kBackground, true},
        {"strokes", "<g stroke='red' stroke-width='9' fill='none'>" + edges + "</g>" + kBackground,
         true},
        {"edges outside", "<path d='M0 0L" + far + "'/>", false},
        {"points outside", "<polyline points='" + far + "'/>", false},
        {"enlarged", "<g transform='scale(1e4)'>" + edges + "</g>", false},
        {"enlarged by a style sheet", "<style>path{transform:scale(1e4)}</style>" + edges, false},
        {"wide strokes", "<g stroke='red' style='stroke-width:1e6'>" + edges + "</g>", false},
    };
    for (const auto &row : rows) {
        const int64_t start = TimeBudget::threadTime();
        const auto read = picture(drawing(row.content));
        const QImage image = read ? read->squareImage(1024) : QImage();
        EXPECT_LT(TimeBudget::threadTime() - start, 3'000'000'000) << row.what;
        EXPECT_EQ(image.width(), row.isDrawn ? 1024 : 0) << row.what;
    }
    EXPECT_EQ(middleOf(kBackground + veil.repeated(20'000)), kLime) << "enlarged";
}

/// Qt's plug-in for MNG, if it is installed, repeats nothing 2^62 times.
TEST(Picture, ReadsNoAnimationsWithLoops) {
    EXPECT_FALSE(picture(QByteArray::fromHex(
        "8A4D4E470D0A1A0A" // signature
        "0000001C4D4844520000004000000040000003E800000000000000000000000000000001550C28E0" // MHDR
        "000000054C4F4F50007FFFFFFFA33DAF43"                                               // LOOP
        "000000054C4F4F50017FFFFFFF9E5D86F3"                                               // LOOP
        "00000001454E444C0171A21AA9"                                                       // ENDL
        "00000001454E444C0006A52A3F")));
}

/// An icon file with the given PNG files.
QByteArray ico(const QList<QSize> &sizes) {
    const auto little = [](int number, int length) {
        QByteArray bytes;
        for (int index = 0; index < length; ++index)
            bytes += static_cast<char>(number >> 8 * index);
        return bytes;
    };
    QByteArray table = little(0, 2) + little(1, 2) + little(static_cast<int>(sizes.size()), 2);
    QByteArray content;
    for (const QSize size : sizes) {
        QImage image(size, QImage::Format_RGBA8888);
        image.fill(Qt::red);
        const QByteArray png = encodePng(image);
        const auto start = static_cast<int>(6 + 16 * sizes.size() + content.size());
        table += little(size.width(), 1) + little(size.height(), 1) + little(0, 2) + little(1, 2) +
                 little(32, 2) + little(static_cast<int>(png.size()), 4) + little(start, 4);
        content += png;
    }
    return table + content;
}

TEST(Picture, ReadsTheLargestImage) {
    const auto read = picture(ico({{16, 16}, {64, 64}, {32, 32}}));
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->isVector());
    EXPECT_EQ(read->size(), QSize(64, 64));
}

TEST(Picture, ReadsOtherFormats) {
    EXPECT_TRUE(picture(corpusFile("jpeg2000/rgba.jp2")));
    QImage image(8, 8, QImage::Format_RGBA8888);
    image.fill(QColor(200, 100, 50));
    image.setColorSpace(QColorSpace::DisplayP3);
    for (const char *const format : {"PNG", "JPEG", "BMP"}) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        ASSERT_TRUE(image.save(&buffer, format, 100)) << format;
        const auto read = picture(bytes);
        ASSERT_TRUE(read) << format;
        const bool keepsSpace = format != std::string_view("BMP");
        const QColor expected =
            keepsSpace ? image.convertedToColorSpace(QColorSpace::SRgb).pixelColor(4, 4)
                       : image.pixelColor(4, 4);
        const QColor found = read->squareImage(8).pixelColor(4, 4);
        EXPECT_NEAR(found.red(), expected.red(), 1) << format;
        EXPECT_NEAR(found.green(), expected.green(), 1) << format;
        EXPECT_NEAR(found.blue(), expected.blue(), 1) << format;
    }
    for (const QByteArray &bytes : {QByteArray(), QByteArray("<"), QByteArray("\x89PNG\r\n\x1a\n"),
                                    QByteArray(1000, 'x'), QByteArray("<html/>")})
        EXPECT_FALSE(picture(bytes));
}

TEST(Picture, OpensRegularFilesWithinBounds) {
    const TemporaryFolder folder;
    const auto status = [](const std::string &path) {
        OSStatus found = noErr;
        (void)Picture::read(path.c_str(), &found);
        return found;
    };
    const std::string drawn = folder.write("a.svg", drawing(kBackground).toStdString());
    EXPECT_EQ(status(folder.link("link", drawn)), noErr);
    EXPECT_EQ(status(folder.at("missing")), fnfErr);
    EXPECT_EQ(status(folder.fifo("fifo")), errFSOperationNotSupported);
    EXPECT_EQ(status(folder.path()), errFSOperationNotSupported);
    EXPECT_EQ(status("/dev/zero"), errFSOperationNotSupported);
    EXPECT_EQ(status(folder.file("sparse", uintmax_t{1} << 40)), fileBoundsErr);
    EXPECT_EQ(status(folder.file("zeros", 1 << 20)), mapReadErr);
    QByteArray huge = encodePng(QImage(1, 1, QImage::Format_RGBA8888));
    huge.replace(16, 8, QByteArray::fromHex("0000500000005000"));
    EXPECT_EQ(status(folder.write("huge.png", huge.toStdString())), fileBoundsErr);
}

} // namespace
