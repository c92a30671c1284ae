// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/FileLabels.h"

#include "platform/workspace/UserDefaults.h"

namespace MWCore {
namespace {

struct LabelRow {
    const char *name;
    QRgb color;
};
/// By number, from 1 on. The swatches in resources/labels are drawn from these colours.
constexpr LabelRow kLabelRows[] = {
    {"Gray", 0x8E9196},   //
    {"Green", 0x5DB545},  //
    {"Purple", 0xA45BC8}, //
    {"Blue", 0x3D87E0},   //
    {"Yellow", 0xEBC034}, //
    {"Red", 0xE2493F},    //
    {"Orange", 0xF08A24}, //
};

QString keyFor(const char *what, qsizetype number) {
    return QLatin1String(what) + QString::number(number);
}

} // namespace

QStringList fileLabels() {
    const UserDefaults defaults;
    QStringList names = {"None"};
    for (const LabelRow &row : kLabelRows)
        names += row.name;
    for (qsizetype number = 0; number < names.size(); ++number)
        if (const QString chosen = defaults.text(keyFor("MXLabelName", number)); !chosen.isEmpty())
            names[number] = chosen;
    return names;
}

QList<QColor> fileLabelColors() {
    const UserDefaults defaults;
    QList<QColor> colors = {Qt::transparent};
    for (const LabelRow &row : kLabelRows)
        colors += QColor(row.color);
    for (qsizetype number = 1; number < colors.size(); ++number) {
        const QColor chosen(defaults.text(keyFor("MXLabelColor", number)));
        if (chosen.isValid())
            colors[number] = chosen;
    }
    return colors;
}

} // namespace MWCore
