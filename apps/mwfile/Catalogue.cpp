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

/// Nothing when the catalogue cannot tell.
std::optional<FSCatalogInfo> told(const std::string &path, uint32_t whichInfo) {
    FSRef ref;
    FSCatalogInfo info;
    if (FSPathMakeRef(QByteArray::fromStdString(path), &ref) != noErr ||
        FSGetCatalogInfo(ref, whichInfo, &info) != noErr)
        return std::nullopt;
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
    if (const auto created = told(path, kFSCatInfoCreateDate))
        addTime(json, "dateCreated", timeFrom(created->createDate).tv_sec);
    else
        json.null("dateCreated");
    const auto info = told(path, kFSCatInfoFinderInfo).value_or(FSCatalogInfo()).finderInfo;
    addCode(json, "type", info.type);
    addCode(json, "creator", info.creator);
    json.text("label", labelText(info.labelNumber()));
    json.truth("isInvisible", info.flags & kIsInvisible);
    const auto flags = told(path, kFSCatInfoNodeFlags).value_or(FSCatalogInfo()).nodeFlags;
    json.truth("isLocked", flags & kFSNodeLockedMask);
}

Lines catalogueLines(const std::string &path) {
    Lines lines;
    const auto info = told(path, kFSCatInfoFinderInfo).value_or(FSCatalogInfo()).finderInfo;
    if (info.labelNumber() != 0)
        lines.emplace_back("Label", labelText(info.labelNumber()));
    if (const auto type = codeText(info.type))
        lines.emplace_back("Type", DisplayText(*type).text());
    if (const auto creator = codeText(info.creator))
        lines.emplace_back("Creator", DisplayText(*creator).text());
    if (info.flags & kIsInvisible)
        lines.emplace_back("Invisible", "yes");
    const auto flags = told(path, kFSCatInfoNodeFlags).value_or(FSCatalogInfo()).nodeFlags;
    if (flags & kFSNodeLockedMask)
        lines.emplace_back("Locked", "yes");
    return lines;
}

} // namespace MWCore::mwfile
