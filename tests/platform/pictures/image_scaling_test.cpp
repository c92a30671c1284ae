// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/ImageScaling.h"

#include <gtest/gtest.h>

#include <QColorSpace>
#include <QRandomGenerator>

#include <array>
#include <cmath>
#include <limits>

namespace {

using namespace MWCore;

constexpr NSImageInterpolation kInterpolations[] = {
    NSImageInterpolationDefault, NSImageInterpolationNone, NSImageInterpolationLow,
    NSImageInterpolationHigh, NSImageInterpolationMedium};

QImage noise(int width, int height, int leastAlpha) {
    QRandomGenerator random(7);
    QImage image(width, height, QImage::Format_RGBA8888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixelColor(x, y,
                                QColor(random.bounded(256), random.bounded(256),
                                       random.bounded(256), random.bounded(leastAlpha, 256)));
    return image;
}

double light(double byte) {
    const double value = byte / 255;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double byteOfLight(double light) {
    return 255 * (light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055);
}

/// The length that two intervals share.
double overlap(double start, double end, double otherStart, double otherEnd) {
    return std::max(0.0, std::min(end, otherEnd) - std::max(start, otherStart));
}

/// Red, green, blue and alpha of one output pixel, integrated over every source pixel's rectangle.
std::array<double, 4> integral(const QImage &source, const QRectF &target, int x, int y) {
    std::array<double, 4> sum = {};
    const double width = target.width() / source.width();
    const double height = target.height() / source.height();
    for (int row = 0; row < source.height(); ++row)
        for (int column = 0; column < source.width(); ++column) {
            const double left = target.left() + column * width;
            const double top = target.top() + row * height;
            const QColor colour = source.pixelColor(column, row);
            const double opacity = overlap(left, left + width, x, x + 1) *
                                   overlap(top, top + height, y, y + 1) * colour.alphaF();
            sum[0] += opacity * light(colour.red());
            sum[1] += opacity * light(colour.green());
            sum[2] += opacity * light(colour.blue());
            sum[3] += opacity;
        }
    for (std::size_t channel = 0; sum[3] > 0 && channel < 3; ++channel)
        sum[channel] = byteOfLight(sum[channel] / sum[3]);
    sum[3] *= 255;
    return sum;
}

struct ShrunkRow {
    QSize source;
    QRectF target;
};
const ShrunkRow kShrunkRows[] = {
    {{32, 32}, {0, 0, 8, 8}},       {{31, 45}, {1.25, 0.5, 9.5, 10.1}}, // ends between pixels
    {{3, 100}, {5.9, 1, 0.2, 11}},                                      // narrower than a pixel
    {{40, 40}, {-5, -3.3, 20, 33}},                                     // larger than the canvas
    {{12, 12}, {0.5, 0.5, 12, 12}},                                     // not scaled, but moved
};

TEST(ImageScaling, AveragesTheAreaOfEachPixelInLinearLight) {
    for (const ShrunkRow &row : kShrunkRows) {
        const QImage source = noise(row.source.width(), row.source.height(), 0);
        const QImage drawn = drawnImage(source, {13, 13}, row.target, NSImageInterpolationHigh);
        for (int y = 0; y < 13; ++y)
            for (int x = 0; x < 13; ++x) {
                const auto expected = integral(source, row.target, x, y);
                const uchar *const pixel = drawn.constScanLine(y) + qsizetype{4} * x;
                const std::size_t first = pixel[3] == 0 ? 3 : 0; // invisible pixels have no colour
                for (std::size_t channel = first; channel < 4; ++channel)
                    ASSERT_NEAR(pixel[channel], expected[channel], 0.51) << x << "," << y;
            }
    }
}

TEST(ImageScaling, LeavesAnUnscaledImageAsItIs) {
    QImage source = noise(64, 20, 255);
    for (int x = 0; x < 64; ++x) // every byte in every channel
        for (int y = 0; y < 4; ++y)
            source.setPixelColor(x, y, QColor(4 * x + y, 255 - 4 * x - y, (4 * x + y) ^ 0x55));
    for (const NSImageInterpolation interpolation : kInterpolations) {
        const QImage drawn = drawnImage(source, {70, 30}, {3, 5, 64, 20}, interpolation);
        EXPECT_EQ(drawn.copy(3, 5, 64, 20), source) << interpolation;
        EXPECT_EQ(qAlpha(drawn.pixel(2, 5)) + qAlpha(drawn.pixel(67, 24)), 0) << interpolation;
    }
}

/// Whatever is computed lies between neighbouring source pixels: nothing rings, and edges of the
/// image do not fade.
TEST(ImageScaling, EnlargesBetweenTheNeighbours) {
    const QImage steps = noise(5, 1, 255);
    for (const NSImageInterpolation interpolation : kInterpolations) {
        const QImage drawn = drawnImage(steps, {105, 21}, {0, 0, 105, 21}, interpolation);
        for (int x = 0; x < 105; ++x) {
            const double position = (x + 0.5) / 21 - 0.5;
            const int before = std::clamp(static_cast<int>(std::floor(position)), 0, 4);
            const int after = std::clamp(static_cast<int>(std::floor(position)) + 1, 0, 4);
            const auto [least, most] =
                std::minmax({qRed(steps.pixel(before, 0)), qRed(steps.pixel(after, 0))});
            ASSERT_GE(qRed(drawn.pixel(x, 7)), least) << x;
            ASSERT_LE(qRed(drawn.pixel(x, 7)), most) << x;
            ASSERT_EQ(qAlpha(drawn.pixel(x, 0)), 255) << x;
        }
        EXPECT_EQ(drawn.pixel(52, 10), steps.pixel(2, 0)); // at a source pixel's centre
    }
}

TEST(ImageScaling, SurvivesAnyTarget) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const QImage source = noise(3, 1000, 255);
    for (const double start : {0.0, -1e300, 1e300, -1e9, 5.5, 16.0, kNan, -kInfinity})
        for (const double length :
             {0.0, -4.0, 1e-300, 1e-7, 1e-5, 0.3, 2e9, 1e300, 1.7e308, kNan, kInfinity})
            for (const NSImageInterpolation interpolation : kInterpolations) {
                const bool covers = start < 0 && start + length > 16 && std::isfinite(length) &&
                                    std::isfinite(start);
                const QImage wide =
                    drawnImage(source, {16, 16}, {start, 2, length, 7}, interpolation);
                const QImage high =
                    drawnImage(source, {16, 16}, {2, start, 7, length}, interpolation);
                ASSERT_EQ(wide.size(), QSize(16, 16));
                ASSERT_EQ(high.size(), QSize(16, 16));
                ASSERT_TRUE(!covers || qAlpha(wide.pixel(15, 5)) == 255) << start << ' ' << length;
                ASSERT_TRUE(!covers || qAlpha(high.pixel(5, 15)) == 255) << start << ' ' << length;
            }
    EXPECT_TRUE(drawnImage(QImage(), {4, 4}, {0, 0, 4, 4}, NSImageInterpolationHigh).isNull());
    EXPECT_TRUE(drawnImage(source, {0, 4}, {0, 0, 4, 4}, NSImageInterpolationHigh).isNull());
}

struct FittedRow {
    QSize source;
    int width;
    QRect visible;
};
const FittedRow kFittedRows[] = {
    {{3, 1000}, 512, {255, 0, 2, 512}}, {{3, 1000}, 16, {7, 0, 1, 16}},
    {{1000, 3}, 1, {0, 0, 1, 1}},       {{300, 200}, 32, {0, 5, 32, 21}},
    {{7, 7}, 20, {0, 0, 20, 20}},
};

TEST(ImageScaling, FitsIntoTheMiddleOfASquare) {
    for (const FittedRow &row : kFittedRows) {
        QImage source(row.source, QImage::Format_RGB32);
        source.fill(Qt::red);
        QImage expected(row.width, row.width, QImage::Format_RGBA8888);
        expected.fill(Qt::transparent);
        for (int y = row.visible.top(); y <= row.visible.bottom(); ++y)
            for (int x = row.visible.left(); x <= row.visible.right(); ++x)
                expected.setPixelColor(x, y, Qt::red);
        EXPECT_EQ(fittedImage(source, row.width), expected) << row.width;
    }
    EXPECT_TRUE(fittedImage(QImage(), 16).isNull());
    EXPECT_TRUE(fittedImage(noise(2, 2, 0), 0).isNull());
}

TEST(ImageScaling, ConvertsToSrgb) {
    QImage source = noise(8, 8, 255);
    source.setColorSpace(QColorSpace::DisplayP3);
    QImage expected = source.convertedToColorSpace(QColorSpace::SRgb);
    expected.setColorSpace({});
    EXPECT_EQ(fittedImage(source, 8), expected);
}

} // namespace
