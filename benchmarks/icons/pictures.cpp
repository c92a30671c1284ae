// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/icons/pictures.h"

#include <algorithm>
#include <cstdint>

#include <QLinearGradient>
#include <QPainter>

namespace pictures {
namespace {

/// A number from 0 to 1 that depends on the arguments alone.
double random(int x, int y, int layer) {
    uint32_t hash =
        uint32_t(x) * 0x9E3779B1 ^ uint32_t(y) * 0x85EBCA77 ^ uint32_t(layer) * 0xC2B2AE3D;
    hash = (hash ^ hash >> 15) * 0x2C1B3C6D;
    hash = (hash ^ hash >> 12) * 0x297A2D39;
    return (hash ^ hash >> 15) / 4294967295.0;
}

/// Random numbers at the corners of squares of @p cell pixels, interpolated in between.
double smoothNoise(int x, int y, int cell, int layer) {
    const int column = x / cell;
    const int row = y / cell;
    const double right = double(x % cell) / cell;
    const double down = double(y % cell) / cell;
    const double upper =
        random(column, row, layer) * (1 - right) + random(column + 1, row, layer) * right;
    const double lower =
        random(column, row + 1, layer) * (1 - right) + random(column + 1, row + 1, layer) * right;
    return upper * (1 - down) + lower * down;
}

/// Noise of every size, the coarser the stronger, from 0 to 1.
double texture(int x, int y, int width, int layer) {
    double sum = 0;
    double strength = 0.5;
    for (int cell = width / 2; cell > 1; cell /= 2, strength /= 2)
        sum += strength * smoothNoise(x, y, cell, layer * 32 + cell);
    return sum;
}

} // namespace

QImage photograph(int width) {
    constexpr double kGrain = 0.02;
    constexpr double kColour = 0.4; // how far the channels differ from their common brightness
    QImage image(width, width, QImage::Format_RGBA8888);
    for (int y = 0; y < width; ++y) {
        uchar *pixel = image.scanLine(y);
        for (int x = 0; x < width; ++x, pixel += 4) {
            const double edge = texture(x, y, width, 0) > 0.5 ? 0.15 : 0; // outlines of shapes
            const double brightness = texture(x, y, width, 1) + edge;
            for (int channel = 0; channel < 3; ++channel) {
                const double colour = smoothNoise(x, y, width / 4, 2 + channel) - 0.5;
                const double grain = kGrain * (random(x, y, 8 + channel) - 0.5);
                pixel[channel] =
                    uchar(std::clamp(brightness + kColour * colour + grain, 0.0, 1.0) * 255);
            }
            pixel[3] = 255;
        }
    }
    return image;
}

QImage drawing(int width) {
    QImage image(width, width, QImage::Format_RGBA8888);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(width, width); // from here on the square is 1 x 1
    painter.setPen(Qt::NoPen);
    QLinearGradient sky(0, 0, 0, 1);
    sky.setColorAt(0, QColor(0x8F, 0xC7, 0xFF));
    sky.setColorAt(1, QColor(0x1F, 0x5F, 0xBF));
    painter.setBrush(sky);
    painter.drawRoundedRect(QRectF(0.05, 0.05, 0.9, 0.9), 0.2, 0.2);
    painter.setBrush(QColor(0xFF, 0xD2, 0x3F));
    painter.drawEllipse(QRectF(0.2, 0.2, 0.3, 0.3));
    painter.setBrush(QColor(0x2E, 0x7D, 0x32));
    painter.drawPolygon(QPolygonF({{0.1, 0.85}, {0.45, 0.45}, {0.9, 0.85}}));
    return image;
}

} // namespace pictures
