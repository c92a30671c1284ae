// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <algorithm>
#include <cmath>
#include <random>
#include <span>

#include <QColor>
#include <QImage>

/// A disc with a soft edge, gradients and, in one colour, noise.
inline QImage softDisc(int side, unsigned seed = 1) {
    std::mt19937 random(seed);
    QImage image(side, side, QImage::Format_RGBA8888);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const double radius = std::hypot(2.0 * x / side - 1, 2.0 * y / side - 1);
            const int alpha = std::clamp(static_cast<int>((1 - radius) * 600), 0, 255);
            const int noise = static_cast<int>(random() % 64);
            image.setPixel(x, y, qRgba(x * 255 / side, y * 255 / side, noise, alpha));
        }
    return image;
}

/// Noise in every colour and in alpha.
inline QImage noise(int side) {
    std::mt19937 random;
    QImage image(side, side, QImage::Format_RGBA8888);
    for (uchar &sample : std::span(image.bits(), static_cast<std::size_t>(image.sizeInBytes())))
        sample = static_cast<uchar>(random());
    return image;
}

inline QImage oneColour(int side) {
    QImage image(side, side, QImage::Format_RGBA8888);
    image.fill(QColor(200, 100, 50, 150));
    return image;
}
