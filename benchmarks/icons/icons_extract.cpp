// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// This library: decodes every element of FOLDER/family.icns and, if an effort is given, writes each
// to a PNG file in FOLDER/EFFORT. usage: icons_extract [EFFORT] FOLDER
#include "icons/IconFamily.h"
#include "platform/pictures/PngEncoding.h"

#include <QFile>
#include <QString>

namespace {

bool write(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

int main(int argumentCount, char **arguments) {
    using namespace MWCore;
    if (argumentCount < 2)
        return 2;
    const QString folder = QString::fromUtf8(arguments[argumentCount - 1]);
    const auto family = IconFamily::initWithContentsOfFile(folder + QStringLiteral("/family.icns"));
    if (!family)
        return 1;
    const IconImage images = family->imageWithAllReps();
    if (images.isNull())
        return 1;
    if (argumentCount == 2)
        return 0;
    const QString effort = QString::fromUtf8(arguments[1]);
    for (const IconImage::Representation &one : images.representations)
        if (!write(QStringLiteral("%1/%2/%3.png").arg(folder, effort).arg(one.type),
                   encodePng(one.image, effort.toInt())))
            return 1;
    return 0;
}
