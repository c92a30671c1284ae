// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/Catalogue.h"

#include "apps/mwfile/DisplayText.h"
#include "apps/mwfile/Failure.h"
#include "apps/mwfile/ItemJson.h"
#include "platform/workspace/FileLabels.h"

#include <ctime>

namespace MWCore::mwfile {
namespace {

/// What the catalogue can tell; what it cannot is 0.
FSCatalogInfo told(const std::string &path) {
    FSRef ref;
    FSCatalogInfo info;
    if (FSPathMakeRef(QByteArray::fromStdString(path), &ref) != noErr)
        return info;
    // Asked apart, so that the one fails without the other.
    (void)FSGetCatalogInfo(ref, kFSCatInfoNodeFlags | kFSCatInfoCreateDate, &info);
    (void)FSGetCatalogInfo(ref, kFSCatInfoFinderInfo, &info);
    return info;
}

void addCode(JsonObject &json, std::string_view key, uint32_t code) {
    if (const auto text = codeText(code))
        json.text(key, *text);
    else
        json.null(key);
}

} // namespace

FSRef referenceTo(const std::string &path) {
    FSRef ref;
    if (const OSStatus status = FSPathMakeRef(QByteArray::fromStdString(path), &ref);
        status != noErr)
        throw Failure(path, status);
    return ref;
}

std::optional<std::string> codeText(uint32_t code) {
    if (code == 0)
        return std::nullopt;
    std::string text;
    for (const int shift : {24, 16, 8, 0})
        text += static_cast<char>(code >> shift);
    return text;
}

std::string labelText(int number) {
    return fileLabels().value(number).toStdString();
}

void addCatalogue(JsonObject &json, const std::string &path) {
    const FSCatalogInfo info = told(path);
    if (info.createDate != 0)
        addTime(json, "dateCreated", timeFrom(info.createDate).tv_sec);
    else
        json.null("dateCreated");
    addCode(json, "type", info.finderInfo.type);
    addCode(json, "creator", info.finderInfo.creator);
    json.text("label", labelText(info.finderInfo.labelNumber()));
    json.truth("isInvisible", info.finderInfo.flags & kIsInvisible);
    json.truth("isLocked", info.nodeFlags & kFSNodeLockedMask);
}

Lines catalogueLines(const std::string &path) {
    Lines lines;
    const FSCatalogInfo info = told(path);
    if (info.finderInfo.labelNumber() != 0)
        lines.emplace_back("Label", labelText(info.finderInfo.labelNumber()));
    if (const auto type = codeText(info.finderInfo.type))
        lines.emplace_back("Type", DisplayText(*type).text());
    if (const auto creator = codeText(info.finderInfo.creator))
        lines.emplace_back("Creator", DisplayText(*creator).text());
    if (info.finderInfo.flags & kIsInvisible)
        lines.emplace_back("Invisible", "yes");
    if (info.nodeFlags & kFSNodeLockedMask)
        lines.emplace_back("Locked", "yes");
    return lines;
}

} // namespace MWCore::mwfile
