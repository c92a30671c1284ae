// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/icon_sheet/Sheet.h"

#include <algorithm>

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QPainter>

namespace {

constexpr int kMargin = 8;
constexpr int kLabelHeight = 14;
constexpr int kLabelPixels = 9;
constexpr int kNarrowest = 56;

struct Background {
    QColor color;
    QColor text;
};

QFont labelFont() {
    QFont font;
    font.setPixelSize(kLabelPixels);
    return font;
}

class Grid {
public:
    Grid(const std::vector<SheetItem> &items, const SheetLayout &layout)
        : items_(items), layout_(layout), cell_(std::max(layout.points + kMargin, kNarrowest),
                                                layout.points + kLabelHeight + kMargin) {}

    [[nodiscard]] QSize size() const {
        const int rows = (int(items_.size()) + layout_.columns - 1) / layout_.columns;
        return {cell_.width() * layout_.columns + 2 * kMargin, cell_.height() * rows + 2 * kMargin};
    }

    void draw(QPainter &painter, const Background &background) const {
        painter.fillRect(QRect({}, size()), background.color);
        painter.setPen(background.text);
        for (int index = 0; index < int(items_.size()); ++index)
            drawItem(painter, items_[std::size_t(index)],
                     {kMargin + index % layout_.columns * cell_.width(),
                      kMargin + index / layout_.columns * cell_.height()});
    }

private:
    void drawItem(QPainter &painter, const SheetItem &item, QPoint corner) const {
        const int left = (cell_.width() - layout_.points) / 2;
        painter.drawImage(corner + QPoint(left, 0),
                          item.icon->image(layout_.points, layout_.scale));
        const QRect label(corner + QPoint(0, layout_.points), QSize(cell_.width(), kLabelHeight));
        painter.drawText(
            label, Qt::AlignCenter,
            painter.fontMetrics().elidedText(item.label, Qt::ElideMiddle, label.width() - 2));
    }

    const std::vector<SheetItem> &items_;
    SheetLayout layout_;
    QSize cell_;
};

} // namespace

QImage sheet(const std::vector<SheetItem> &items, const SheetLayout &layout) {
    const Grid grid(items, layout);
    const QSize half = grid.size();
    QImage image(QSize(half.width(), 2 * half.height()) * layout.scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(layout.scale);
    QPainter painter(&image);
    painter.setFont(labelFont());
    grid.draw(painter, {QColor(0xFA, 0xFA, 0xFA), Qt::black});
    painter.translate(0, half.height());
    grid.draw(painter, {QColor(0x24, 0x24, 0x24), Qt::white});
    return image;
}
