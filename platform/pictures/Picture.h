// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <memory>
#include <optional>

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace MWCore {

struct SvgDrawing;

/// A picture from a file: pixels, or a vector drawing that is rendered at any size. Nothing that a
/// drawing refers to is opened. Its texts are rendered only in a process with a QGuiApplication, as
/// Qt has no fonts without one. A plain value; any thread.
class MWCORE_EXPORT Picture {
public:
    /// The largest width and height in pixels that is decoded.
    static constexpr int kLargestSide = 16'384;

    /// A picture of pixels.
    explicit Picture(const QImage &image);

    /// Reads the regular file at @p path (file-system representation): SVG, PNG, JPEG, and what
    /// else Qt has plug-ins for. A file with several images gives the largest. nullopt on failure,
    /// with the cause in @p status: mapReadErr if it is damaged or in no known format,
    /// fileBoundsErr if it is too large.
    [[nodiscard]] static std::optional<Picture> read(const QByteArray &path, OSStatus *status);

    /// The same for the content of a file.
    [[nodiscard]] static std::optional<Picture> fromBytes(const QByteArray &bytes,
                                                          OSStatus *status);

    [[nodiscard]] bool isVector() const { return !drawing_.isEmpty(); }

    /// In pixels; of a vector drawing, the size that it declares.
    [[nodiscard]] QSize size() const { return size_; }

    /// The picture in a transparent square of @p width pixels, centred, aspect ratio kept.
    /// QImage::Format_RGBA8888. Pixels are scaled by area averaging; a vector drawing is rendered
    /// at this size. Null if @p width is not from 1 to kLargestSide, memory runs out or the drawing
    /// is damaged.
    [[nodiscard]] QImage squareImage(int width) const;

private:
    Picture() = default;
    static std::optional<Picture> fromDrawing(const QByteArray &bytes, OSStatus *status);

    QImage pixels_;
    QByteArray drawing_;                         ///< the bytes of an SVG file
    std::shared_ptr<const SvgDrawing> harmless_; ///< what of them is drawn
    bool hasTexts_ = false;                      ///< whether that includes texts
    QSize size_;
};

} // namespace MWCore
