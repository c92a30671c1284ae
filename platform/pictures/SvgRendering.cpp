// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/SvgDrawing.h"

#include <MWCore/TimeBudget.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>
#include <utility>

#include <QBuffer>
#include <QImageIOHandler>
#include <QImageIOPlugin>
#include <QPluginLoader>
#include <QVariant>

namespace MWCore {
namespace {

constexpr char kFormat[] = "svg";
constexpr int64_t kMostTime = 120'000'000; // ns

int64_t area(QSize size) {
    return int64_t{size.width()} * size.height();
}

/// @p size, reduced to at most @p pixels.
QSize reduced(QSize size, double pixels) {
    const double factor = std::sqrt(pixels / static_cast<double>(area(size)));
    return factor < 1 ? (QSizeF(size) * factor).toSize().expandedTo({1, 1}) : size;
}

/// A size at which the drawing is rendered in some 100 ms, whatever it contains.
QSize quickSize(const SvgDrawing &drawing, QSize size) {
    constexpr double kMostFillings = 1e7; // pixels that each element may fill or cross
    constexpr double kMostLength = 2e7;   // pixels
    const double side = kMostLength / std::max(drawing.length, 1.0);
    return reduced(size,
                   std::min(kMostFillings / static_cast<double>(drawing.elements), side * side));
}

QImageIOPlugin *linkedPlugin() {
    for (QObject *const object : QPluginLoader::staticInstances()) {
        auto *const plugin = qobject_cast<QImageIOPlugin *>(object);
        if (plugin && plugin->capabilities(nullptr, kFormat).testFlag(QImageIOPlugin::CanRead))
            return plugin;
    }
    return nullptr;
}

/// Qt's plug-in; null if there is none. QImageReader searches for plug-ins only once: if the
/// process has no descriptor left at that moment, it never finds them.
QImageIOPlugin *svgPlugin() {
    static std::atomic<QImageIOPlugin *> known = nullptr;
    if (QImageIOPlugin *const plugin = known)
        return plugin;
    QPluginLoader loader(QStringLiteral("imageformats/qsvg"));
    auto *const loaded = qobject_cast<QImageIOPlugin *>(loader.instance());
    known = loaded ? loaded : linkedPlugin();
    return known;
}

/// Reads a drawing with Qt's plug-in.
class SvgReader {
public:
    explicit SvgReader(const QByteArray &bytes) {
        buffer_.setData(bytes);
        buffer_.open(QIODevice::ReadOnly);
        if (QImageIOPlugin *const plugin = svgPlugin())
            handler_.reset(plugin->create(&buffer_, kFormat));
    }

    QSize size() { return handler_ ? handler_->option(QImageIOHandler::Size).toSize() : QSize(); }

    /// Null if memory runs out.
    QImage image(QSize size) {
        QImage image;
        if (handler_)
            handler_->setOption(QImageIOHandler::ScaledSize, size);
        return handler_ && handler_->read(&image) ? image : QImage();
    }

private:
    QBuffer buffer_;
    std::unique_ptr<QImageIOHandler> handler_;
};

/// The drawing rendered at ever larger sizes up to @p size, as long as the next one is expected to
/// take less time than is left. What it takes grows with the area, and at times somewhat faster.
QImage renderedInTime(const SvgDrawing &drawing, QSize size) {
    constexpr int64_t kTimePerPixel = 10; // ns
    constexpr double kLeastGrowth = 3;
    constexpr double kMostGrowth = 8;
    const int64_t start = TimeBudget::threadTime();
    const int64_t end = start + kMostTime + kTimePerPixel * area(size);
    QSize next = quickSize(drawing, size);
    for (int64_t now = start;;) {
        QImage image = SvgReader(drawing.bytes).image(next);
        const int64_t before = std::exchange(now, TimeBudget::threadTime());
        const double growth = static_cast<double>(end - now) / static_cast<double>(now - before);
        if (image.isNull() || next == size || growth < kLeastGrowth)
            return image;
        next = reduced(size, static_cast<double>(area(next)) * std::min(growth / 2, kMostGrowth));
    }
}

} // namespace

QSize svgSize(const SvgDrawing &drawing) {
    if (!svgPlugin())
        return {};
    return drawing.size.isEmpty() ? SvgReader(drawing.bytes).size() : drawing.size;
}

QImage svgImage(const SvgDrawing &drawing, QSize size) {
    const QImage image = renderedInTime(drawing, size);
    if (image.isNull())
        return {};
    const QImage whole = image.size() == size
                             ? image
                             : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return whole.convertToFormat(QImage::Format_RGBA8888);
}

} // namespace MWCore
