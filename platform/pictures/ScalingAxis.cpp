// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/ScalingAxis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace MWCore {
namespace {

/// Where the source pixels lie on the output pixels.
struct Placement {
    int length;        ///< of the source, in pixels
    double start, end; ///< in output pixels

    /// Source pixels per output pixel.
    [[nodiscard]] double step() const { return length / (end - start); }
    /// The position in the source, from 0 to its length, of a position in the output.
    [[nodiscard]] double source(double output) const {
        return std::clamp((output - start) * step(), 0.0, static_cast<double>(length));
    }
    [[nodiscard]] int nearest(double position) const {
        return static_cast<int>(std::clamp(std::floor(position), 0.0, length - 1.0));
    }
    /// The part of the output pixel at @p pixel that the source covers.
    [[nodiscard]] double coverage(int pixel) const {
        return std::min(pixel + 1.0, end) - std::max<double>(pixel, start);
    }
};

/// Adds the output pixel @p made, whose source pixels start at @p first, which may be before the
/// source's start, just as the last may be after its end: the pixel at the end stands for them.
void append(ScalingAxis &axis, int length, int first, std::span<const double> weights,
            double coverage) {
    ScaledPixel made;
    const int last = first + static_cast<int>(weights.size()) - 1;
    made.first = std::clamp(first, 0, length - 1);
    made.count = std::clamp(last, 0, length - 1) - made.first + 1;
    made.weights = axis.weights.size();
    made.coverage = static_cast<float>(coverage);
    const int middle = first + (last - first) / 2;
    made.before = std::clamp(middle, 0, length - 1);
    made.after = std::clamp(middle + 1, 0, length - 1);
    axis.weights.resize(axis.weights.size() + static_cast<std::size_t>(made.count));
    for (int source = first; source <= last; ++source) {
        const int inside = std::clamp(source, 0, length - 1) - made.first;
        axis.weights[made.weights + static_cast<std::size_t>(inside)] +=
            static_cast<float>(weights[static_cast<std::size_t>(source - first)] * coverage);
    }
    axis.pixels.push_back(made);
}

/// The nearest source pixel, for output pixels whose centre is in the target.
void appendNearest(ScalingAxis &axis, const Placement &place, int pixel) {
    const double centre = pixel + 0.5;
    constexpr std::array kWhole = {1.0};
    if (centre >= place.start && centre < place.end)
        append(axis, place.length, place.nearest(place.source(centre)), kWhole, 1);
}

/// The two nearest source pixels.
void appendLinear(ScalingAxis &axis, const Placement &place, int pixel) {
    const double position = place.source(pixel + 0.5) - 0.5;
    const double before = std::floor(position);
    const double part = position - before;
    append(axis, place.length, static_cast<int>(before), std::array{1 - part, part},
           place.coverage(pixel));
}

/// A Catmull-Rom spline through the four nearest source pixels.
void appendSpline(ScalingAxis &axis, const Placement &place, int pixel) {
    const double position = place.source(pixel + 0.5) - 0.5;
    const double before = std::floor(position);
    const double t = position - before;
    const std::array weights = {
        ((2 - t) * t - 1) * t / 2,
        ((3 * t - 5) * t * t + 2) / 2,
        ((4 - 3 * t) * t + 1) * t / 2,
        (t - 1) * t * t / 2,
    };
    append(axis, place.length, static_cast<int>(before) - 1, weights, place.coverage(pixel));
}

/// Every source pixel within the output pixel, weighted by the length of the overlap.
void appendArea(ScalingAxis &axis, const Placement &place, int pixel) {
    const double from = place.source(pixel);
    const double to = place.source(pixel + 1.0);
    ScaledPixel made;
    made.first = place.nearest(from);
    made.count = place.nearest(std::ceil(to) - 1) - made.first + 1;
    made.weights = axis.weights.size();
    made.coverage = static_cast<float>(place.coverage(pixel));
    for (int source = made.first; source < made.first + made.count; ++source) {
        const double overlap = std::min(source + 1.0, to) - std::max<double>(source, from);
        axis.weights.push_back(static_cast<float>(overlap / place.step()));
    }
    axis.pixels.push_back(made);
}

using Append = void (*)(ScalingAxis &axis, const Placement &place, int pixel);

Append kernelFor(NSImageInterpolation interpolation, bool enlarges) {
    switch (interpolation) {
    case NSImageInterpolationNone:
        return appendNearest;
    case NSImageInterpolationLow:
    case NSImageInterpolationMedium:
        return appendLinear;
    default:
        return enlarges ? appendSpline : appendArea;
    }
}

} // namespace

ScalingAxis scalingAxis(int length, int canvas, double start, double end,
                        NSImageInterpolation interpolation) {
    ScalingAxis axis;
    const Placement place = {length, start, end};
    const Append appendPixel = kernelFor(interpolation, end - start > length);
    axis.isLimited = appendPixel == appendSpline;
    axis.begin = static_cast<int>(std::clamp<double>(std::floor(start), 0, canvas));
    const int endOfTarget = static_cast<int>(std::clamp<double>(std::ceil(end), 0, canvas));
    for (int pixel = axis.begin; pixel < endOfTarget; ++pixel) {
        appendPixel(axis, place, pixel);
        if (axis.isEmpty())
            axis.begin = pixel + 1;
    }
    return axis;
}

} // namespace MWCore
