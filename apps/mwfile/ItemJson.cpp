// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/ItemJson.h"

#include "apps/mwfile/LocalItem.h"
#include "apps/mwfile/PermissionText.h"

#include <cstdio>
#include <ctime>

namespace MWCore::mwfile {
void addTime(JsonObject &json, std::string_view key, int64_t seconds) {
    constexpr int64_t kFirst = -62'167'219'200; // 0000-01-01T00:00:00Z
    constexpr int64_t kLast = 253'402'300'799;  // 9999-12-31T23:59:59Z
    const auto time = static_cast<std::time_t>(seconds);
    std::tm fields{};
    if (seconds < kFirst || seconds > kLast || !gmtime_r(&time, &fields)) {
        json.null(key);
        return;
    }
    char date[40];
    char text[64];
    std::strftime(date, sizeof date, "-%m-%dT%H:%M:%SZ", &fields);
    std::snprintf(text, sizeof text, "%04d%s", fields.tm_year + 1900, date);
    json.text(key, text);
}

const char *kindWord(int32_t type) {
    switch (type) {
    case MFS_TYPE_DIRECTORY:
        return "folder";
    case MFS_TYPE_FILE:
        return "file";
    case MFS_TYPE_LINK:
        return "link";
    default:
        return "unknown";
    }
}

JsonObject itemJson(const mfs_fso &item) {
    JsonObject json;
    json.text("name", item.name);
    json.textOrNull("completePath", item.complete_path);
    json.text("kind", kindWord(item.type));
    json.number("fsoKind", item.type);
    json.textOrNull("extension", item.extension);
    json.number("permissions", item.permissions);
    json.text("permissionsAsString", permissionsText(item.permissions));
    json.text("owner", item.owner);
    json.text("group", item.group);
    json.number("links", item.links);
    json.number("size", mfs_fso_full_size(&item));
    json.text("date", item.date_modified);
    json.number("dateAsTimeT", item.mod_time);
    addTime(json, "dateModified", item.mod_time);
    if (mfs_fso_isLink(&item)) {
        json.textOrNull("aliasOrLinkTargetPath", linkTarget(item));
        json.text("aliasOrLinkTargetKind", kindWord(item.target_type));
    }
    return json;
}

} // namespace MWCore::mwfile
