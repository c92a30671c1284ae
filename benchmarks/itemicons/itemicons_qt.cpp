// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Qt: QFileIconProvider's icon of each entry of a folder, drawn. What entries read from the file
// system is read before.
#include "benchmarks/itemicons/measure.h"

#include <vector>

#include <QApplication>
#include <QDir>
#include <QFileIconProvider>
#include <QIcon>
#include <QPixmap>

namespace {

QFileInfoList entries;
std::vector<QIcon> icons;

long list(const char *theme, const char *path) {
    QIcon::setThemeSearchPaths({QDir::homePath() + "/.local/share/icons", "/usr/share/icons"});
    QIcon::setThemeName(QString::fromUtf8(theme));
    entries =
        QDir(QFile::decodeName(path))
            .entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries)
        contender::use(entry.isDir() || entry.isSymLink() || entry.size() > 0);
    icons.reserve(static_cast<std::size_t>(entries.size()));
    return static_cast<long>(entries.size());
}

void drawAll() {
    const QFileIconProvider provider;
    for (const QFileInfo &entry : entries) {
        icons.push_back(provider.icon(entry));
        contender::use(icons.back().pixmap(itemicons::kPixels));
        if (icons.size() == 1)
            contender::endPart("first icon and image");
    }
}

void repeat() {
    for (const QIcon &icon : icons)
        contender::use(icon.pixmap(itemicons::kPixels));
    contender::endPart("pixmap() again");
}

} // namespace

int main(int argumentCount, char **arguments) {
    const QApplication application(argumentCount, arguments);
    return itemicons::run(argumentCount, arguments, list, drawAll, repeat);
}
