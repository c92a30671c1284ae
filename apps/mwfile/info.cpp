// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/Catalogue.h"
#include "apps/mwfile/commands.h"
#include "apps/mwfile/Facts.h"
#include "apps/mwfile/Failure.h"
#include "apps/mwfile/ItemJson.h"
#include "apps/mwfile/LocalItem.h"
#include "apps/mwfile/Output.h"
#include "apps/mwfile/PermissionText.h"
#include "apps/mwfile/SizeText.h"
#include "core/mfs_date.h"

#include <cstdlib>
#include <new>

#include <sys/stat.h>

namespace MWCore::mwfile {
namespace {

/// What leads elsewhere says to what; anything else says what people call it, if that is more.
std::string kindText(const MXFileSystemObject &item) {
    if (const NodeKind *const kind = nodeKind(item))
        return kind->word;
    const mfs_fso &record = *item.cstruct();
    if (mfs_fso_isLink(&record) && record.target_type == MFS_TARGET_UNKNOWN)
        return "link to nothing";
    const std::string word = kindWord(item.fsoKind());
    if (item.isAlias() && isLost(item))
        return word + " to something that is not where it was";
    if (isPointer(item))
        return word + " to a " +
               (item.aliasOrLinkTargetKind() == MXItemKindUnknown
                    ? "device, fifo or socket"
                    : kindWord(item.aliasOrLinkTargetKind()));
    const QString called = item.kindAsString();
    const bool isMore =
        !called.isEmpty() && called.compare(QString::fromStdString(word), Qt::CaseInsensitive) != 0;
    return isMore ? word + " (" + DisplayText(bytesOf(called)).text() + ")" : word;
}

std::string dateText(int64_t seconds) {
    const std::unique_ptr<char, decltype(&std::free)> text(mfs_date_string_from_time_t(seconds),
                                                           &std::free);
    if (!text)
        throw std::bad_alloc();
    return text.get();
}

/// The special bits of a mode word.
uint32_t specialBits(const MXPermission &permissions) {
    return (permissions.hasSuidBit() ? S_ISUID : 0U) | (permissions.hasSgidBit() ? S_ISGID : 0U) |
           (permissions.hasStickyBit() ? S_ISVTX : 0U);
}

std::string countText(int32_t count, const char *one, const char *many) {
    return groupedDigits(count) + " " + (count == 1 ? one : many);
}

std::string contentsText(const MXFileSystemObject &folder) {
    return countText(folder.subFolderCount(), "folder", "folders") + ", " +
           countText(folder.fileCount(), "file", "files");
}

void addPermissions(Facts &facts, const MXFileSystemObject &item) {
    if (mfs_fso_isLink(item.cstruct()) && !item.isLink())
        return; // leads nowhere
    const int32_t number = permissionNumber(item);
    facts.add("Permissions", permissionsText(number) + " (" + std::to_string(number) + ")" +
                                 (item.isLink() ? ", of what it leads to" : ""));
    if (const uint32_t special = specialBits(*item.permissions()))
        facts.add("Special", specialText(special));
}

void addMarks(Facts &facts, const MXFileSystemObject &item, const Colours &colours) {
    const Marks marks = marksOf(item);
    if (marks.created)
        facts.add("Created", DisplayText(dateText(*marks.created)).text());
    facts.addText("Volume", item.volumeName());
    if (marks.label->id() != 0)
        facts.add("Label", colours.dot(*marks.label) + labelText(*marks.label));
    if (const auto type = codeText(marks.type))
        facts.add("Type", DisplayText(*type).text());
    if (const auto creator = codeText(marks.creator))
        facts.add("Creator", DisplayText(*creator).text());
    if (marks.isInvisible)
        facts.add("Invisible", "yes");
    if (marks.isLocked)
        facts.add("Locked", "yes");
}

/// The item's path as a heading and below it what is known.
std::string description(const DescribedItem &described, const Colours &colours) {
    const MXFileSystemObject &item = *described.object;
    const mfs_fso &record = *described.record;
    Facts facts(colours);
    facts.add("Kind", kindText(item));
    if (const auto target = isPointer(item) ? finalTarget(item) : std::nullopt)
        facts.add("Leads to", DisplayText(*target).text());
    facts.addText("Version", item.versionString());
    if (item.isDir())
        facts.add("Contains", described.contentsFailure.empty() ? contentsText(item)
                                                                : described.contentsFailure);
    else
        facts.add("Size", wholeSize(mfs_fso_full_size(&record)));
    addPermissions(facts, item);
    facts.addText("Owner", item.owner());
    facts.addText("Group", item.group());
    facts.add("Hard links", groupedDigits(item.links()));
    facts.addText("Modified", item.date());
    addMarks(facts, item, colours);
    return colours.name(item, DisplayText(record.complete_path).text()) + "\n" + facts.text();
}

std::string json(const DescribedItem &described) {
    const MXFileSystemObject &item = *described.object;
    JsonObject object = itemJson(item, marksOf(item), finalTarget(item));
    object.textOrNull("kindAsString", item.kindAsString());
    object.textOrNull("volumeName", item.volumeName());
    object.textOrNull("versionString", item.versionString());
    if (item.isDir() && described.contentsFailure.empty()) {
        object.number("fileCount", item.fileCount());
        object.number("subFolderCount", item.subFolderCount());
    }
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
