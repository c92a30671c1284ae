// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "ItemJson.h"

#include "LocalItem.h"
#include "PermissionText.h"

#include <cstdio>
#include <ctime>

namespace MWCore::mwfile {
namespace {

void addCode(JsonObject &json, std::string_view key, uint32_t code) {
    if (const auto text = codeText(code))
        json.text(key, *text);
    else
        json.null(key);
}

void addMetadata(JsonObject &json, const MXFileSystemObject &item, const ItemMetadata &metadata) {
    addTime(json, "dateCreated", secondsCreated(metadata));
    addCode(json, "type", metadata.type());
    addCode(json, "creator", metadata.creator());
    if (isIncomplete(metadata)) {
        json.null("label");
        json.null("isInvisible");
    } else {
        json.text("label", labelText(*labelWithNumber(metadata.labelNumber())));
        json.boolean("isInvisible", metadata.isInvisible());
    }
    json.boolean("isLocked", isLocked(item, metadata));
}

} // namespace

void addTime(JsonObject &json, std::string_view key, std::optional<int64_t> seconds) {
    constexpr int64_t kFirst = -62'167'219'200; // 0000-01-01T00:00:00Z
    constexpr int64_t kLast = 253'402'300'799;  // 9999-12-31T23:59:59Z
    const auto time = static_cast<std::time_t>(seconds.value_or(0));
    std::tm fields{};
    if (!seconds || *seconds < kFirst || *seconds > kLast || !gmtime_r(&time, &fields)) {
        json.null(key);
        return;
    }
    char date[40];
    char text[64];
    std::strftime(date, sizeof date, "-%m-%dT%H:%M:%SZ", &fields);
    std::snprintf(text, sizeof text, "%04d%s", fields.tm_year + 1900, date);
    json.text(key, text);
}

const char *kindWord(MXItemKind kind) {
    switch (kind) {
    case MXItemKindFolder:
        return "folder";
    case MXItemKindFile:
        return "file";
    case MXItemKindLink:
        return "link";
    case MXItemKindAlias:
        return "alias";
    case MXItemKindApplication:
        return "application";
    case MXItemKindPackage:
        return "package";
    case MXItemKindVolume:
        return "volume";
    default:
        return "unknown";
    }
}

JsonObject itemJson(const MXFileSystemObject &item, const ItemMetadata &metadata,
                    const std::optional<std::string> &target) {
    JsonObject json;
    const int32_t permissions = permissionNumber(item);
    json.textOrNull("name", item.name());
    json.textOrNull("completePath", item.completePath());
    json.text("kind", kindWord(item.fsoKind()));
    json.number("fsoKind", int32_t(item.fsoKind()));
    json.textOrNull("extension", item.extension());
    json.number("permissions", permissions);
    json.text("permissionsAsString", permissionsText(permissions));
    json.textOrNull("owner", item.owner());
    json.textOrNull("group", item.group());
    json.number("links", item.links());
    json.number("size", item.size());
    json.textOrNull("date", item.date());
    json.number("dateAsTimeT", item.dateAsTimeT());
    addTime(json, "dateModified", item.dateAsTimeT());
    addMetadata(json, item, metadata);
    if (isLinkOrAlias(item)) {
        if (item.isAlias())
            json.textOrNull("aliasOrLinkTargetPath", target ? target->c_str() : nullptr);
        else
            json.textOrNull("aliasOrLinkTargetPath",
                            target ? item.aliasOrLinkTargetPath() : QString());
        json.text("aliasOrLinkTargetKind", kindWord(item.aliasOrLinkTargetKind()));
    }
    if (item.isApplication())
        json.boolean("isPackagedApplication", item.isPackagedApplication());
    return json;
}

} // namespace MWCore::mwfile
