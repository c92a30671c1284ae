// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Qt: QFileIconProvider's icon of each entry of a folder, drawn. Like the others, it asks the file
// system anew about each entry.
#include "benchmarks/itemicons/measure.h"

#include <vector>

#include <QApplication>
#include <QDir>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QIcon>
#include <QPixmap>
#include <QStringList>

namespace {

QStringList entries;
std::vector<QIcon> icons;

long list(const char *theme, const char *path) {
    QIcon::setThemeSearchPaths({QDir::homePath() + "/.local/share/icons", "/usr/share/icons"});
    QIcon::setThemeName(QString::fromUtf8(theme));
    const QDir folder(QFile::decodeName(path));
    for (const QString &name :
         folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        entries += folder.filePath(name);
    icons.reserve(static_cast<std::size_t>(entries.size()));
    return static_cast<long>(entries.size());
}

void drawAll() {
    const QFileIconProvider provider;
    for (const QString &entry : entries) {
        icons.push_back(provider.icon(QFileInfo(entry)));
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
