// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <vector>

#include <QStringView>

/// Upper bounds of lengths in a drawing, in user units. Qt's rasterizer follows every outline pixel
/// by pixel, even far outside the image.
namespace MWCore {

/// The absolute values of the numbers in @p text.
[[nodiscard]] std::vector<double> numbersIn(QStringView text);

/// At most the length of the outline that @p numbers describe: the data of a path, the points of a
/// polygon, or the size of another shape.
[[nodiscard]] double longestOutline(QStringView numbers);

/// At most the factor by which the value of a `transform` enlarges.
[[nodiscard]] double largestScale(QStringView transform);

/// The largest number in @p text.
[[nodiscard]] double largestNumber(QStringView text);

/// The largest width of strokes, or height of texts, in a style.
[[nodiscard]] double largestWidth(QStringView style);

} // namespace MWCore
