// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/ItemJson.h"

#include "apps/mwfile/LocalItem.h"
#include "apps/mwfile/PermissionText.h"

#include <ctime>

namespace MWCore::mwfile {
namespace {

/// Null for a time that the calendar cannot name.
void addTime(JsonObject &json, std::string_view key, int64_t seconds) {
    const auto time = static_cast<std::time_t>(seconds);
    std::tm fields{};
    char text[48];
    if (gmtime_r(&time, &fields) &&
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &fields) != 0)
        json.text(key, text);
    else
        json.null(key);
}

} // namespace

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
    json.number("fsoKind", item.type); // the record's types are the model's first kinds
    json.textOrNull("extension", item.extension);
    json.number("permissions", item.permissions);
    json.text("permissionsAsString", permissionsText(item.permissions));
    json.text("owner", item.owner);
    json.text("group", item.group);
    json.number("links", item.links);
    json.number("size", mfs_fso_full_size(&item));
    json.text("date", item.date_modified);
    addTime(json, "dateModified", item.mod_time);
    if (mfs_fso_isLink(&item)) {
        json.textOrNull("aliasOrLinkTargetPath", linkTarget(item));
        json.text("aliasOrLinkTargetKind", kindWord(item.target_type));
    }
    return json;
}

} // namespace MWCore::mwfile
