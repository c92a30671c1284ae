// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "ImageInterpolation.h"

#include <QImage>
#include <QRectF>
#include <QSize>

/// Scaling of images. Colours are weighted by their alpha and averaged in linear light, so that
/// transparent edges get no dark fringe and fine lines keep their brightness. Sources in another
/// colour space are converted to sRGB; their device pixel ratio is ignored. Any thread.
namespace MWCore {

/// A transparent image of @p canvas pixels with @p source scaled into @p target, which may begin
/// and end between pixels and may be empty. QImage::Format_RGBA8888, not premultiplied. Null if
/// @p source is null, @p canvas is empty or memory runs out.
[[nodiscard]] QImage drawnImage(const QImage &source, QSize canvas, const QRectF &target,
                                NSImageInterpolation interpolation);

/// The largest size that fits into a square of @p width pixels with the aspect ratio of @p size,
/// which is not empty. Each side gets at least one pixel.
[[nodiscard]] QSize fittedSize(QSize size, int width);

/// @p source scaled to fit into a transparent square of @p width pixels, centred on whole pixels
/// with its fittedSize(). Otherwise like drawnImage().
[[nodiscard]] QImage fittedImage(const QImage &source, int width,
                                 NSImageInterpolation interpolation = NSImageInterpolationHigh);

} // namespace MWCore
