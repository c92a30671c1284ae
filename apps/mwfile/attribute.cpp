// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "commands.h"
#include "DisplayText.h"
#include "Failure.h"
#include "JsonObject.h"
#include "Output.h"
#include "ShownMetadata.h"

#include <MWCore/FileLabels.h>

#include <algorithm>
#include <array>

#include <sys/stat.h>
#include <unistd.h>

namespace MWCore::mwfile {
namespace {

/// A parsed value; nullopt if the text is not valid.
using Value = std::optional<uint32_t>;

Value readLabel(const std::string &text) {
    const QStringList names = fileLabels();
    for (qsizetype number = 0; number < names.size(); ++number)
        if (names[number].compare(QString::fromStdString(text), Qt::CaseInsensitive) == 0 ||
            text == std::to_string(number))
            return static_cast<uint32_t>(number);
    return std::nullopt;
}

Value readCode(const std::string &text) {
    constexpr std::size_t kLength = 4;
    if (text == "none")
        return 0;
    if (text.size() != kLength)
        return std::nullopt;
    uint32_t code = 0;
    for (const char character : text)
        code = code << 8 | static_cast<unsigned char>(character);
    return code;
}

Value readSwitch(const std::string &text) {
    if (text == "on" || text == "yes")
        return 1;
    return text == "off" || text == "no" ? Value(0) : std::nullopt;
}

std::string switchText(bool on) {
    return on ? "on" : "off";
}

/// An attribute: how its value is parsed and printed, and its place in the catalogue information.
struct Row {
    Attribute attribute;
    const char *key;    ///< in JSON
    const char *values; ///< message for an invalid value
    FSCatalogInfoBitmap whichInfo;
    Value (*read)(const std::string &text);
    std::string (*shown)(const FSCatalogInfo &info);
    void (*set)(FSCatalogInfo &info, uint32_t value);
};
const std::array kRows = {
    Row{Attribute::Label, "label",
        "a label is none, gray, green, purple, blue, yellow, red or orange", kFSCatInfoFinderInfo,
        readLabel,
        [](const FSCatalogInfo &info) {
            return labelText(*labelWithNumber(info.finderInfo.labelNumber()));
        },
        [](FSCatalogInfo &info, uint32_t value) {
            info.finderInfo.setLabelNumber(static_cast<int>(value));
        }},
    Row{Attribute::Type, "type", "a type is four characters or none", kFSCatInfoFinderInfo,
        readCode,
        [](const FSCatalogInfo &info) { return codeText(info.finderInfo.type).value_or(""); },
        [](FSCatalogInfo &info, uint32_t value) { info.finderInfo.type = value; }},
    Row{Attribute::Creator, "creator", "a creator is four characters or none", kFSCatInfoFinderInfo,
        readCode,
        [](const FSCatalogInfo &info) { return codeText(info.finderInfo.creator).value_or(""); },
        [](FSCatalogInfo &info, uint32_t value) { info.finderInfo.creator = value; }},
    Row{Attribute::Invisible, "isInvisible", "use on or off", kFSCatInfoFinderInfo, readSwitch,
        [](const FSCatalogInfo &info) { return switchText(info.finderInfo.flags & kIsInvisible); },
        [](FSCatalogInfo &info, uint32_t value) {
            info.finderInfo.flags.setFlag(kIsInvisible, value != 0);
        }},
    Row{Attribute::Lock, "isLocked", "use on or off", kFSCatInfoNodeFlags, readSwitch,
        [](const FSCatalogInfo &info) { return switchText(info.nodeFlags & kFSNodeLockedMask); },
        [](FSCatalogInfo &info, uint32_t value) {
            info.nodeFlags.setFlag(kFSNodeLockedMask, value != 0);
        }},
};

/// What the command line requests.
struct Request {
    std::string path;
    Value value; ///< nullopt: print
};

bool exists(const std::string &path) {
    struct stat item = {};
    return lstat(path.c_str(), &item) == 0;
}

/// Accepts value and path in either order. Throws UsageFailure if both orders are possible.
Request requestFrom(const AttributeOptions &options, const Row &row) {
    if (!options.value)
        return {options.path, std::nullopt};
    const Request inOrder = {options.path, row.read(*options.value)};
    const Request swapped = {*options.value, row.read(options.path)};
    if (!inOrder.value && !swapped.value)
        throw UsageFailure(exists(options.path) ? *options.value : options.path, row.values);
    const bool mayBeInOrder = inOrder.value && exists(inOrder.path);
    const bool mayBeSwapped = swapped.value && exists(swapped.path);
    if (mayBeInOrder && mayBeSwapped && inOrder.path != swapped.path)
        throw UsageFailure(options.path + " " + *options.value,
                           "either could be the item; write ./ before its name");
    return mayBeInOrder || !swapped.value ? inOrder : swapped;
}

FSCatalogInfo catalogInfo(const Request &request, const FSRef &ref, FSCatalogInfoBitmap whichInfo) {
    FSCatalogInfo info;
    if (const OSStatus status = FSGetCatalogInfo(ref, whichInfo, &info); status != noErr)
        throw Failure(request.path, status);
    return info;
}

void change(const Request &request, const FSRef &ref, const Row &row, FSCatalogInfo &info) {
    row.set(info, *request.value);
    const auto setField = [&](FinderInfo &now) { // keeps other changes made meanwhile
        FSCatalogInfo current;
        current.finderInfo = now;
        row.set(current, *request.value);
        now = current.finderInfo;
    };
    const OSStatus status = row.whichInfo == kFSCatInfoFinderInfo
                                ? FSChangeFinderInfo(ref, setField)
                                : FSSetCatalogInfo(ref, row.whichInfo, info);
    if (status == permErr && row.attribute == Attribute::Lock && geteuid() != 0)
        throw Failure(request.path, "only the superuser may lock and unlock");
    if (status != noErr)
        throw Failure(request.path, status);
}

void printJson(const Request &request, const Row &row, const FSCatalogInfo &info) {
    JsonObject json;
    const std::string shown = row.shown(info);
    json.text("path", request.path);
    if (row.read == readSwitch)
        json.boolean(row.key, shown == switchText(true));
    else
        json.textOrNull(row.key, shown.empty() ? nullptr : shown.c_str());
    print(json.finished() + "\n");
}

void printText(const Row &row, const FSCatalogInfo &info) {
    const std::string shown = row.shown(info);
    print((shown.empty() ? "none" : DisplayText(shown).text()) + "\n");
}

} // namespace

void attribute(const AttributeOptions &options) {
    const Row &row = *std::ranges::find(kRows, options.attribute, &Row::attribute);
    const Request request = requestFrom(options, row);
    const FSRef ref = referenceTo(request.path);
    FSCatalogInfo info = catalogInfo(request, ref, row.whichInfo);
    if (request.value)
        change(request, ref, row, info);
    if (options.form == Form::Json)
        printJson(request, row, info);
    else if (!request.value)
        printText(row, info);
}

} // namespace MWCore::mwfile
