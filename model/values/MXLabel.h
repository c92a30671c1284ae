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

/// A label with which users mark items: a number, a name and a colour. Never changes.
/// Reference-counted; any thread.
class MWCORE_EXPORT MXLabel : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXLabel>;

    [[nodiscard]] static Ptr initWithName(const QString &name, const QColor &color, int16_t andID);

    /// 0 (no label) to 7.
    [[nodiscard]] int16_t id() const { return labelID_; }
    [[nodiscard]] QColor color() const { return labelColor_; }

    /// The name, which users may have chosen.
    [[nodiscard]] QString description() const { return labelName_; }

    /// The label's image for menus: 16 x 16 pixels, or 32 x 32 if @p devicePixelRatio is above 1.
    /// It has the label's default colour, not the user's. Null for label 0 and for numbers without
    /// an image.
    [[nodiscard]] QImage colorSwatch(qreal devicePixelRatio = 1) const;

private:
    MXLabel(QString name, const QColor &color, int16_t number)
        : labelName_(std::move(name)), labelColor_(color), labelID_(number) {}

    QString labelName_;
    QColor labelColor_;
    int16_t labelID_;
};

} // namespace MWCore
