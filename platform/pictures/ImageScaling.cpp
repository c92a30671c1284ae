// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/ImageScaling.h"

#include "platform/pictures/LinearLight.h"
#include "platform/pictures/ScalingAxis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include <QColorSpace>
#include <QRect>

namespace MWCore {
namespace {

/// A target narrower than this shows nothing, and its scale cannot be computed with.
constexpr double kThinnest = 1e-6;

using Row = std::vector<LinearPixel>;

/// @p sum kept between the two source pixels around it, so that a spline does not ring.
LinearPixel limited(const LinearPixel &sum, const LinearPixel &before, const LinearPixel &after,
                    float coverage) {
    const LinearPixel least = (before < after ? before : after) * coverage;
    const LinearPixel most = (before < after ? after : before) * coverage;
    const LinearPixel raised = sum < least ? least : sum;
    return raised > most ? most : raised;
}

/// Scales the rows of an image horizontally, each once, as long as they are asked for in order.
class RowScaler {
public:
    RowScaler(const QImage &source, const ScalingAxis &axis)
        : source_(source), axis_(axis),
          pixels_(static_cast<std::size_t>(axis.endOfSource() - axis.firstSource())) {
        y_.fill(-1);
        rows_.fill(Row(axis.pixels.size()));
    }

    /// The row @p y of the source. Valid until the fourth row from here is asked for.
    const LinearPixel *row(int y);

private:
    void scale(Row &row) const;

    const QImage &source_;
    const ScalingAxis &axis_;
    Row pixels_;                            ///< the part of a source row that is needed
    static constexpr std::size_t kKept = 4; // as many as a spline needs
    std::array<int, kKept> y_;
    std::array<Row, kKept> rows_;
};

const LinearPixel *RowScaler::row(int y) {
    const std::size_t slot = static_cast<std::size_t>(y) % kKept;
    if (y_[slot] != y) {
        const qsizetype start = qsizetype{4} * axis_.firstSource();
        linearFromSrgb(source_.constScanLine(y) + start, static_cast<int>(pixels_.size()),
                       pixels_.data());
        scale(rows_[slot]);
        y_[slot] = y;
    }
    return rows_[slot].data();
}

void RowScaler::scale(Row &row) const {
    const auto at = [this](int x) { return pixels_.data() + (x - axis_.firstSource()); };
    LinearPixel *made = row.data();
    for (const ScaledPixel &pixel : axis_.pixels) {
        const float *const weights = axis_.weights.data() + pixel.weights;
        const LinearPixel *const pixels = at(pixel.first);
        LinearPixel sum = {};
        for (int index = 0; index < pixel.count; ++index)
            sum += pixels[index] * weights[index];
        if (axis_.isLimited)
            sum = limited(sum, *at(pixel.before), *at(pixel.after), pixel.coverage);
        *made++ = sum;
    }
}

/// Computes the output row @p pixel of @p axis from the rows that it is made of.
void sumRows(RowScaler &rows, const ScalingAxis &axis, const ScaledPixel &pixel, Row &sum) {
    std::ranges::fill(sum, LinearPixel{});
    for (int index = 0; index < pixel.count; ++index) {
        const float weight = axis.weights[pixel.weights + static_cast<std::size_t>(index)];
        const LinearPixel *const row = rows.row(pixel.first + index);
        for (std::size_t x = 0; x < sum.size(); ++x)
            sum[x] += row[x] * weight;
    }
    if (!axis.isLimited)
        return;
    const LinearPixel *const before = rows.row(pixel.before);
    const LinearPixel *const after = rows.row(pixel.after);
    for (std::size_t x = 0; x < sum.size(); ++x)
        sum[x] = limited(sum[x], before[x], after[x], pixel.coverage);
}

void draw(const QImage &source, const ScalingAxis &columns, const ScalingAxis &rows,
          QImage &canvas) {
    RowScaler scaler(source, columns);
    Row sum(columns.pixels.size());
    uchar *line = canvas.scanLine(rows.begin) + qsizetype{4} * columns.begin;
    for (const ScaledPixel &pixel : rows.pixels) {
        sumRows(scaler, rows, pixel, sum);
        srgbFromLinear(sum.data(), static_cast<int>(sum.size()), line);
        line += canvas.bytesPerLine();
    }
}

/// Null if memory runs out.
QImage inSrgb(const QImage &image) {
    QImage converted = image.convertToFormat(QImage::Format_RGBA8888);
    const QColorSpace srgb(QColorSpace::SRgb);
    if (converted.colorSpace().isValid() && converted.colorSpace() != srgb)
        converted.convertToColorSpace(srgb);
    return converted;
}

bool isVisible(const QRectF &target) {
    return std::isfinite(target.x()) && std::isfinite(target.y()) &&
           std::isfinite(target.right()) && std::isfinite(target.bottom()) &&
           target.right() - target.left() > kThinnest && target.bottom() - target.top() > kThinnest;
}

/// The shorter side of an image whose longer side, @p longer, becomes @p width.
int shorterSide(int shorter, int longer, int width) {
    return std::max(1, qRound(static_cast<double>(width) * shorter / longer));
}

} // namespace

QImage drawnImage(const QImage &source, QSize canvas, const QRectF &target,
                  NSImageInterpolation interpolation) {
    const QImage image = inSrgb(source);
    QImage drawn(canvas, QImage::Format_RGBA8888);
    if (image.isNull() || drawn.isNull())
        return {};
    drawn.fill(Qt::transparent);
    if (!isVisible(target))
        return drawn;
    const ScalingAxis columns =
        scalingAxis(image.width(), canvas.width(), target.left(), target.right(), interpolation);
    const ScalingAxis rows =
        scalingAxis(image.height(), canvas.height(), target.top(), target.bottom(), interpolation);
    if (!columns.isEmpty() && !rows.isEmpty())
        draw(image, columns, rows, drawn);
    return drawn;
}

QSize fittedSize(QSize size, int width) {
    if (size.width() >= size.height())
        return {width, shorterSide(size.height(), size.width(), width)};
    return {shorterSide(size.width(), size.height(), width), width};
}

QImage fittedImage(const QImage &source, int width, NSImageInterpolation interpolation) {
    if (source.isNull() || width < 1)
        return {};
    const QSize size = fittedSize(source.size(), width);
    const QRect target(QPoint((width - size.width()) / 2, (width - size.height()) / 2), size);
    return drawnImage(source, {width, width}, target, interpolation);
}

} // namespace MWCore
