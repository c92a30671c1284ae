// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <cstdint>

#include <QColor>
#include <QExplicitlySharedDataPointer>
#include <QImage>
#include <QSharedData>
#include <QString>

namespace MWCore {

/// One of the labels with which people mark items: a number, a name and a colour. Never changes.
/// Reference-counted; any thread.
class MWCORE_EXPORT MXLabel : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXLabel>;

    [[nodiscard]] static Ptr initWithName(const QString &name, const QColor &color, int16_t andID);

    /// 0 (no label) to 7.
    [[nodiscard]] int16_t id() const { return labelID_; }
    [[nodiscard]] QColor color() const { return labelColor_; }

    /// The name as the user knows it.
    [[nodiscard]] QString description() const { return labelName_; }

    /// The label's image for menus, 16 x 16 pixels, or 32 x 32 for a screen on which
    /// @p devicePixelRatio is above 1. Null for label 0 and numbers that have none. It shows the
    /// label's own colour, not one that the user chose.
    [[nodiscard]] QImage colorSwatch(qreal devicePixelRatio = 1) const;

private:
    MXLabel(QString name, const QColor &color, int16_t number)
        : labelName_(std::move(name)), labelColor_(color), labelID_(number) {}

    QString labelName_;
    QColor labelColor_;
    int16_t labelID_;
};

} // namespace MWCore
