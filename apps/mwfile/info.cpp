// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/Catalogue.h"
#include "apps/mwfile/Colours.h"
#include "apps/mwfile/commands.h"
#include "apps/mwfile/DisplayText.h"
#include "apps/mwfile/Failure.h"
#include "apps/mwfile/ItemJson.h"
#include "apps/mwfile/LocalItem.h"
#include "apps/mwfile/Output.h"
#include "apps/mwfile/PermissionText.h"
#include "apps/mwfile/SizeText.h"

#include <sys/stat.h>

namespace MWCore::mwfile {
namespace {

std::string kindText(const mfs_fso &item) {
    if (const NodeKind *const kind = nodeKind(item))
        return kind->word;
    if (!mfs_fso_isLink(&item))
        return kindWord(item.type);
    switch (item.target_type) {
    case MFS_TARGET_UNKNOWN:
        return "link to nothing";
    case MFS_TYPE_OTHER:
        return "link to a device, fifo or socket";
    default:
        return std::string("link to a ") + kindWord(item.target_type);
    }
}

std::string countText(int32_t count, const char *one, const char *many) {
    return groupedDigits(count) + " " + (count == 1 ? one : many);
}

std::string contentsText(const mfs_fso &folder) {
    return countText(mfs_fso_subdirectory_count(&folder), "folder", "folders") + ", " +
           countText(mfs_fso_file_count(&folder), "file", "files");
}

/// The item's path as a heading and below it one line a fact.
std::string description(const DescribedItem &described, const Colours &colours) {
    const mfs_fso &item = *described.record;
    std::string text = colours.name(item, DisplayText(item.complete_path).text()) + "\n";
    const auto add = [&](std::string label, std::string_view value) {
        constexpr std::size_t kLabelColumns = 14;
        label.resize(kLabelColumns, ' ');
        text.append("  ").append(colours.quiet(label)).append(value).append("\n");
    };
    add("Kind", kindText(item));
    if (const char *const target = linkTarget(item))
        add("Leads to", DisplayText(target).text());
    if (mfs_fso_isDir(&item))
        add("Contains",
            described.contentsFailure.empty() ? contentsText(item) : described.contentsFailure);
    else
        add("Size", wholeSize(mfs_fso_full_size(&item)));
    add("Permissions",
        permissionsText(item.permissions) + " (" + std::to_string(item.permissions) + ")");
    const uint32_t mode = currentMode(item);
    if (mode & (S_ISUID | S_ISGID | S_ISVTX))
        add("Special", specialText(mode));
    add("Owner", DisplayText(item.owner).text());
    add("Group", DisplayText(item.group).text());
    add("Hard links", groupedDigits(item.links));
    add("Modified", DisplayText(item.date_modified).text());
    for (const auto &[label, value] : catalogueLines(item.complete_path))
        add(label, value);
    return text;
}

std::string json(const DescribedItem &described) {
    const mfs_fso &item = *described.record;
    JsonObject object = itemJson(item);
    if (mfs_fso_isDir(&item) && described.contentsFailure.empty()) {
        object.number("fileCount", mfs_fso_file_count(&item));
        object.number("subFolderCount", mfs_fso_subdirectory_count(&item));
    }
    addCatalogue(object, item.complete_path);
    return object.finished();
}

std::string joined(const std::vector<std::string> &texts, std::string_view separator) {
    std::string whole;
    for (const std::string &text : texts)
        whole.append(whole.empty() ? "" : separator).append(text);
    return whole;
}

} // namespace

bool info(const InfoOptions &options) {
    const Colours colours;
    std::vector<std::string> texts;
    for (const std::string &path : options.paths) {
        try {
            const DescribedItem item = describedItem(path);
            texts.push_back(options.form == Form::Json ? json(item) : description(item, colours));
        } catch (const Failure &failure) {
            complain(failure.what());
        }
    }
    const bool isArray = options.form == Form::Json && options.paths.size() > 1;
    if (isArray)
        print("[\n" + joined(texts, ",\n") + "\n]\n");
    else if (!texts.empty())
        print(joined(texts, "\n") + (options.form == Form::Json ? "\n" : ""));
    return texts.size() == options.paths.size();
}

} // namespace MWCore::mwfile
