// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QSize>

/// Vector drawings (SVG), rendered by Qt's plug-in.
namespace MWCore {

/// Whether @p bytes start like XML, possibly compressed, which no other image does.
[[nodiscard]] bool startsLikeSvg(QByteArrayView bytes);

/// Whether texts are drawn: there is a QGuiApplication.
[[nodiscard]] bool hasSvgTexts();

/// A drawing that can be rendered without harm.
struct SvgDrawing {
    QByteArray bytes;
    QSize size;           ///< declared in pixels; empty if it is in other units or missing
    int64_t elements = 0; ///< that are drawn, including those that take as long as the others
    double length = 0;    ///< at most, of all outlines, in widths or heights of the drawing
};

/// The drawing reduced to what can be rendered without harm. Qt's renderer opens the files that a
/// drawing refers to, aborts the process if it meets text without a QGuiApplication, and repeats
/// elements as often as references to them multiply. Left out are therefore: texts, unless
/// hasSvgTexts(); references to other files; elements that Qt does not draw.
/// nullopt if the drawing is not well-formed, is compressed, or takes too much time or memory.
[[nodiscard]] std::optional<SvgDrawing> harmlessSvg(const QByteArray &bytes);

/// The size that a drawing declares, in pixels; empty if the plug-in is missing or cannot read it.
[[nodiscard]] QSize svgSize(const SvgDrawing &drawing);

/// The drawing stretched to @p size; null if memory runs out or it is damaged. One that would take
/// longer than an eighth of a second (for large images: longer than some fillings of the image) is
/// rendered as large as that permits, and enlarged.
[[nodiscard]] QImage svgImage(const SvgDrawing &drawing, QSize size);

} // namespace MWCore
