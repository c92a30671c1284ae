// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXLabel.h"

#include "platform/foundation/FrameworkResources.h"

namespace MWCore {

MXLabel::Ptr MXLabel::initWithName(const QString &name, const QColor &color, int16_t andID) {
    return Ptr(new MXLabel(name, color, andID));
}

QImage MXLabel::colorSwatch(qreal devicePixelRatio) const {
    if (labelID_ == 0)
        return {};
    const bool isDense = devicePixelRatio > 1;
    const QString name = u'l' + QString::number(labelID_) + QLatin1String(isDense ? "@2x" : "");
    QImage swatch = QImage::fromData(
        FrameworkResources::data(name, QStringLiteral("png")).value_or(QByteArray()));
    swatch.setDevicePixelRatio(isDense ? 2 : 1);
    return swatch;
}

} // namespace MWCore
