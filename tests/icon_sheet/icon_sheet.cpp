// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
//
// usage: icon_sheet OUT.png [--theme NAME|none] [--size POINTS] [--scale SCALE] [--columns N]
// Makes items of every kind and draws their icons. "none": without any theme.
#include "platform/workspace/themes/IconTheme.h"
#include "tests/icon_sheet/Sheet.h"
#include "tests/icon_sheet/SheetItems.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include <QCommandLineParser>
#include <QGuiApplication>

namespace {

constexpr const char *kNoTheme = "none";
constexpr const char *kSystemData = "/usr/share";

/// A home folder of its own; without themes, the MIME database is all that is left of the system's
/// data.
void setEnvironment(const TemporaryFolder &home, const TemporaryFolder &data, bool hasTheme) {
    for (const char *const variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        setenv(variable, home.path().c_str(), 1);
    (void)data.link("mime", std::string(kSystemData) + "/mime");
    setenv("XDG_DATA_DIRS", hasTheme ? kSystemData : data.path().c_str(), 1);
    setenv("XDG_CONFIG_DIRS", data.path().c_str(), 1);
}

void parse(QCommandLineParser &parser) {
    parser.addPositionalArgument("OUT.png", "The picture to write");
    parser.addOptions({{"theme", "The theme, or none", "NAME", kNoTheme},
                       {"size", "The size of the icons", "POINTS", "48"},
                       {"scale", "Pixels per point", "SCALE", "1"},
                       {"columns", "Icons in a row", "N", "15"}});
    parser.addHelpOption();
    parser.process(*QCoreApplication::instance());
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(1);
}

SheetLayout layoutOf(const QCommandLineParser &options) {
    return {options.value("size").toInt(), options.value("scale").toDouble(),
            options.value("columns").toInt()};
}

} // namespace

int main(int argc, char **argv) try {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QCommandLineParser options;
    parse(options);
    const QString theme = options.value("theme");
    const TemporaryFolder home;
    const TemporaryFolder data;
    setEnvironment(home, data, theme != kNoTheme);
    MWCore::IconTheme::setCurrentName(theme);
    makeItems(home);
    const QImage image = sheet(sheetItems(home), layoutOf(options));
    return image.save(options.positionalArguments().first(), "PNG") ? 0 : 1;
} catch (const std::exception &error) {
    std::cerr << "icon_sheet: " << error.what() << '\n';
    return 1;
}
