// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "commands.h"
#include "Failure.h"
#include "IconOutput.h"
#include "IconSource.h"
#include "IconText.h"
#include "Output.h"
#include "OutputFolder.h"

#include <MWCore/IconFamilyBuilder.h>
#include <MWCore/IconFamilyReport.h>
#include <MWCore/ItemIcon.h>
#include <MWCore/PngEncoding.h>

#include <set>

namespace MWCore::mwfile {
namespace {

/// Families that are nested deeper are not exported.
constexpr int kDeepestNesting = 4;

/// "16x16@2x_ic11.png": sorted by size, and readable by people.
std::string fileName(uint32_t type) {
    const IconElementType &element = *iconElementType(type);
    return imageSizeText(element.size, element.scale, "x") + "_" + elementTypeText(type) + ".png";
}

std::set<uint32_t> nestedTypes(const IconFamilyReport &report) {
    std::set<uint32_t> types;
    for (const IconElementReport &element : report.elements)
        if (element.encoding == IconEncoding::Family)
            types.insert(element.type);
    return types;
}

/// Writes the images of @p family to @p folder, and those of nested families to folders in it.
void exportImages(const IconFamily &family, const OutputFolder &folder, int depth = 0) {
    const IconImage images = family.imageWithAllReps();
    for (const IconImage::Representation &one : images.representations)
        folder.write(fileName(one.type), encodePng(one.image));
    if (depth == kDeepestNesting)
        return;
    for (const uint32_t type : nestedTypes(examineIconFamily(family.data())))
        if (const IconFamily::Ptr nested = family.nestedFamily(type))
            exportImages(*nested, folder.subfolder(nestedFamilyName(type)), depth + 1);
}

void exportIconset(const IconFamily &family, const IconExportOptions &options) {
    const OutputFolder folder(options.out, options.existing);
    const OSStatus status = writeIconset(family, pathText(options.out));
    if (status == resNotFound)
        throw Failure(options.file, "has no image in a size of an iconset");
    if (status != noErr)
        throw Failure(options.out, status);
}

void exportPicture(const IconExportOptions &options) {
    const QImage image = shownIconAt(options.file, options.size.value_or(ItemIcon::kPoints));
    writePng(encodePng(image), options.out, options.existing);
}

/// Reports what could not be exported as it should be. True if there is nothing.
bool isWhole(const std::string &path, const IconFamilyHandle &family) {
    const std::vector<std::string> problems = problemTexts(examineIconFamily(family));
    for (const std::string &problem : problems)
        printError(std::string(path).append(": ").append(problem));
    return problems.empty();
}

} // namespace

bool iconExport(const IconExportOptions &options) {
    if (hasExtension(options.out, ".png")) {
        exportPicture(options);
        return true;
    }
    if (options.size)
        throw UsageFailure("--size", "only for one PNG file; name it OUT.png");
    const IconSource source = shownFamilyAt(options.file);
    const IconFamily::Ptr family = IconFamily::initWithData(source.family);
    if (family->imageWithAllReps().isNull())
        throw Failure(options.file, "has no image that can be decoded");
    if (hasExtension(options.out, ".icns"))
        writeFamily(*family, options.out, options.existing);
    else if (isIconset(options.out))
        exportIconset(*family, options);
    else
        exportImages(*family, OutputFolder(options.out, options.existing));
    return isWhole(options.file, source.family);
}

} // namespace MWCore::mwfile
