// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "commands.h"
#include "Failure.h"
#include "IconOutput.h"
#include "IconPictures.h"
#include "IconSource.h"
#include "Output.h"
#include "SizeText.h"

#include <algorithm>

namespace MWCore::mwfile {
namespace {

using Appearance = IconPictures::Appearance;

/// The widths of the largest elements, in pixels.
constexpr int kClassicWidth = 512;
constexpr int kModernWidth = 1024;

void warnIfEnlarged(const IconPictures &pictures, Appearance appearance, int largestElement) {
    const auto &best = pictures.best(appearance);
    if (best && !best->picture.isVector() && best->width < largestElement)
        printError(best->path + ": enlarged from " + groupedDigits(best->width) + " to " +
                   groupedDigits(largestElement) + " pixels for the largest icons");
}

void warnIfUnused(const IconPictures &pictures, const std::vector<std::string> &inputs) {
    const std::string &used = pictures.best(Appearance::Light)->path;
    if (inputs.size() > 1 || isIconset(used))
        printError(used + ": only " + (isIconset(used) ? "its largest" : "this") +
                   " picture is used; --modern uses all of them");
}

IconFamily::Ptr classicFamily(const IconPictures &pictures, const IconImportOptions &options) {
    warnIfUnused(pictures, options.inputs);
    warnIfEnlarged(pictures, Appearance::Light, kClassicWidth);
    return pictures.classicFamily();
}

IconFamily::Ptr modernFamily(const IconPictures &pictures) {
    for (const Appearance appearance : {Appearance::Light, Appearance::Dark})
        warnIfEnlarged(pictures, appearance, kModernWidth);
    return pictures.modernFamily();
}

} // namespace

void iconImport(const IconImportOptions &options) {
    if (!hasExtension(options.out, ".icns"))
        throw UsageFailure(options.out, "the name must end with .icns");
    IconPictures pictures;
    for (const std::string &input : options.inputs)
        pictures.add(input);
    if (!options.dark.empty())
        pictures.add(options.dark, Appearance::Dark);
    if (options.effort)
        pictures.setPngEffort(*options.effort);
    const bool isModern = options.modern || !options.dark.empty();
    const IconFamily::Ptr family =
        isModern ? modernFamily(pictures) : classicFamily(pictures, options);
    writeFamily(*family, options.out, options.existing);
}

} // namespace MWCore::mwfile
