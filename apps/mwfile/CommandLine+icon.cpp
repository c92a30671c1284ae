// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "CommandLine.h"

#include <MWCore/ItemIcon.h>
#include <MWCore/PngEncoding.h>

#include <string>

namespace MWCore::mwfile {
namespace {

void addForce(CLI::App &command, Existing &existing, const char *what) {
    command.add_flag_callback(
        "--force", [&existing] { existing = Existing::Replace; }, what);
}

/// CLI11 gives all positional arguments to the first option that takes several; the last one is
/// passed on to OUT.
void addInputsAndOut(CLI::App &command, IconImportOptions &options) {
    const auto take = [&](const std::vector<std::string> &arguments) {
        options.inputs = arguments;
        if (arguments.size() > 1) {
            options.inputs.pop_back();
            command.get_option("OUT")->add_result(arguments.back());
        }
    };
    command
        .add_option_function<std::vector<std::string>>(
            "INPUT", take, "Pictures (PNG, JPEG, SVG, ...) or .iconset folders")
        ->required();
    command.add_option("OUT", options.out, "The file; its name ends with .icns")->required();
}

} // namespace

void CommandLine::addIcon() {
    CLI::App &icon = *app_.add_subcommand("icon", "Convert icon families, and set custom icons");
    icon.require_subcommand(1);
    addIconFiles(icon);
    addIconExport(icon);
    addIconImport(icon);
    addIconItems(icon);
}

void CommandLine::addIconFiles(CLI::App &icon) {
    CLI::App &info = *icon.add_subcommand("info", "Describe the elements of an icon");
    info.add_option("FILE", iconFiles_.files, "An .icns file, or an item with a custom icon")
        ->required()
        ->expected(1);
    addJson(info, iconFiles_.form);
    runs(info, [this] { iconInfo(iconFiles_); });
    CLI::App &verify = *icon.add_subcommand("verify", "Report what is wrong with icons");
    verify.add_option("FILE", iconFiles_.files, ".icns files, or items with custom icons")
        ->required();
    verify.final_callback([this] { work_ = [this] { return iconVerify(iconFiles_); }; });
}

void CommandLine::addIconExport(CLI::App &icon) {
    CLI::App &command = *icon.add_subcommand("export", "Write the images of an icon to files");
    command
        .add_option("FILE", iconExport_.file,
                    "An .icns file, or an item: its custom icon, else the one that the "
                    "desktop shows")
        ->required();
    command
        .add_option("OUT", iconExport_.out,
                    "A name that ends with .png is a file for one picture: of an .icns file "
                    "its best image, of any other item the icon that a file browser shows, "
                    "with a badge if it is a link, an alias or a locked file. A name that "
                    "ends with .icns is a file for the whole icon. Else a new folder for PNG "
                    "files in all sizes; if its name ends with .iconset, they are named so "
                    "that import finds their sizes")
        ->required();
    command
        .add_option("--size", iconExport_.size,
                    "The width and height of OUT.png in pixels, 1 to " +
                        std::to_string(ItemIcon::kMostPixels) + "; default " +
                        std::to_string(ItemIcon::kPoints))
        ->check(CLI::Range(1, ItemIcon::kMostPixels))
        ->option_text("PIXELS");
    addForce(command, iconExport_.existing,
             "Write into a folder that is not empty; replace files of the same\nnames");
    command.final_callback([this] { work_ = [this] { return iconExport(iconExport_); }; });
}

void CommandLine::addIconImport(CLI::App &icon) {
    CLI::App &command = *icon.add_subcommand("import", "Make an .icns file from pictures");
    addInputsAndOut(command, iconImport_);
    command.add_flag("--modern", iconImport_.modern,
                     "Make all sizes from 16 to 1,024 pixels, each of the picture that fits "
                     "best, not only twelve elements of the largest picture");
    command
        .add_option("--dark", iconImport_.dark,
                    "A picture or .iconset folder for dark backgrounds; implies --modern")
        ->option_text("PICTURE");
    command
        .add_option("--effort", iconImport_.effort,
                    "How hard PNG is compressed: 0 (fast) to 9 (small); default " +
                        std::to_string(kDefaultPngEffort))
        ->check(CLI::Range(0, 9))
        ->option_text("0..9");
    addForce(command, iconImport_.existing, "Replace a file that is not an icon");
    runs(command, [this] { iconImport(iconImport_); });
}

void CommandLine::addIconItems(CLI::App &icon) {
    CLI::App &set = *icon.add_subcommand("set", "Give a file or folder a custom icon");
    set.add_option("ITEM", iconItem_.item, "The file or folder")->required();
    set.add_option("ICON", iconItem_.icon, "An .icns file, a picture or an .iconset folder")
        ->required();
    set.add_flag("--compatible", iconItem_.compatible,
                 "Also store the 1-bit and 8-bit icons that old programs read");
    runs(set, [this] { iconSet(iconItem_); });
    CLI::App &remove = *icon.add_subcommand("remove", "Remove the custom icon of an item");
    remove.add_option("ITEM", iconItem_.item, "The file or folder")->required();
    runs(remove, [this] { iconRemove(iconItem_); });
}

} // namespace MWCore::mwfile
