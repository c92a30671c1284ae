// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "Colours.h"
#include "commands.h"
#include "DisplayText.h"
#include "Failure.h"
#include "IconSource.h"
#include "IconText.h"
#include "JsonObject.h"
#include "Output.h"
#include "SizeText.h"

#include <MWCore/IconFamily.h>
#include <MWCore/IconFamilyReport.h>

#include <algorithm>
#include <iterator>

namespace MWCore::mwfile {
namespace {

/// "22 images, 16 to 1024 pixels".
std::string imagesText(const IconImage &images) {
    if (images.isNull())
        return "no images";
    const auto width = [](const IconImage::Representation &one) { return one.image.width(); };
    const auto [smallest, largest] = std::ranges::minmax_element(images.representations, {}, width);
    std::string text = countedText(images.representations.size(), "image") + ", ";
    if (width(*smallest) < width(*largest))
        text += std::to_string(width(*smallest)) + " to ";
    return text + std::to_string(width(*largest)) + " pixels";
}

std::string lengthText(int64_t bytes) {
    const SizeText size = shortSize(bytes);
    return size.number + " " + (size.unit.empty() ? "bytes" : size.unit);
}

/// The line that answers whether the family is complete and whole.
std::string summary(const IconSource &source, const IconFamilyReport &report) {
    const IconFamily::Ptr family = IconFamily::initWithData(source.family);
    std::string text = source.origin == IconSource::Origin::CustomIcon ? "custom icon, " : "";
    text += imagesText(family->imageWithAllReps());
    for (const IconElementReport &element : report.elements)
        if (element.encoding == IconEncoding::Family)
            text += ", " + nestedFamilyName(element.type) + " variant";
    const std::size_t problems = problemTexts(report).size();
    return text + ", " + lengthText(source.family.size()) + ", " +
           (problems == 0 ? "nothing wrong" : countedText(problems, "problem"));
}

/// The cells of the row of an element.
struct Row {
    std::string type;
    std::string size;
    std::string payload;
    std::string length;
    std::string problem;
};

Row rowOf(const IconElementReport &element) {
    return {elementTypeText(element.type),
            element.size.isEmpty() ? "" : imageSizeText(element.size, element.scale, " x "),
            payloadText(element), groupedDigits(element.length), element.problem.toStdString()};
}

std::size_t widest(const std::vector<Row> &rows, std::string Row::*cell) {
    std::size_t width = 0;
    for (const Row &row : rows)
        width = std::max(width, (row.*cell).size());
    return width;
}

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text + "  ";
}

void printRows(const std::vector<Row> &rows, const Colours &colours) {
    const std::size_t typeWidth = widest(rows, &Row::type);
    const std::size_t sizeWidth = widest(rows, &Row::size);
    const std::size_t payloadWidth = widest(rows, &Row::payload);
    const std::size_t lengthWidth = widest(rows, &Row::length);
    for (const Row &row : rows) {
        print("  " + padded(row.type, typeWidth) + padded(row.size, sizeWidth) +
              padded(row.payload, payloadWidth) +
              std::string(lengthWidth - row.length.size(), ' ') + row.length + " bytes\n");
        if (!row.problem.empty())
            print("  " + padded("", typeWidth) + colours.problem(row.problem) + "\n");
    }
}

void printText(const std::string &path, const IconSource &source, const IconFamilyReport &report) {
    const Colours colours;
    print(DisplayText(path).text() + ": " + summary(source, report) + "\n");
    if (!report.problem.isEmpty())
        print("  " + colours.problem(report.problem.toStdString()) + "\n");
    std::vector<Row> rows;
    std::ranges::transform(report.elements, std::back_inserter(rows), rowOf);
    printRows(rows, colours);
}

/// Null for an empty text.
void addProblem(JsonObject &json, const QString &problem) {
    json.textOrNull("problem", problem.isEmpty() ? QString() : problem);
}

JsonObject json(const IconElementReport &element) {
    JsonObject json;
    json.text("type", elementTypeText(element.type));
    if (element.size.isEmpty())
        json.null("pixelsWide").null("pixelsHigh").null("scale");
    else
        json.number("pixelsWide", element.size.width())
            .number("pixelsHigh", element.size.height())
            .number("scale", element.scale);
    json.text("encoding", payloadText(element))
        .number("offset", element.offset)
        .number("length", element.length);
    addProblem(json, element.problem);
    return json;
}

void printJson(const std::string &path, const IconSource &source, const IconFamilyReport &report) {
    std::vector<JsonObject> elements;
    for (const IconElementReport &element : report.elements)
        elements.push_back(json(element));
    JsonObject whole;
    whole.text("path", path)
        .boolean("isCustomIcon", source.origin == IconSource::Origin::CustomIcon)
        .number("length", source.family.size())
        .boolean("isValid", report.isValid());
    addProblem(whole, report.problem);
    whole.objects("elements", elements);
    print(whole.finished() + "\n");
}

/// Prints what is wrong.
bool isValid(const std::string &path) {
    try {
        const auto problems = problemTexts(examineIconFamily(familyAt(path).family));
        for (const std::string &problem : problems)
            printError(std::string(path).append(": ").append(problem));
        return problems.empty();
    } catch (const Failure &failure) {
        printError(failure.what());
        return false;
    }
}

} // namespace

void iconInfo(const IconFilesOptions &options) {
    const std::string &path = options.files.front();
    const IconSource source = familyAt(path);
    const IconFamilyReport report = examineIconFamily(source.family);
    if (options.form == Form::Json)
        printJson(path, source, report);
    else
        printText(path, source, report);
}

bool iconVerify(const IconFilesOptions &options) {
    bool areAllValid = true;
    for (const std::string &path : options.files) {
        if (isValid(path))
            print(DisplayText(path).text() + ": valid\n");
        else
            areAllValid = false;
    }
    return areAllValid;
}

} // namespace MWCore::mwfile
