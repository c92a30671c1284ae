// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "Catalogue.h"
#include "commands.h"
#include "Facts.h"
#include "Failure.h"
#include "ItemJson.h"
#include "LocalItem.h"
#include "Output.h"
#include "PermissionText.h"
#include "SizeText.h"

#include <MWCore/mfs_date.h>

#include <cstdlib>
#include <memory>
#include <new>

#include <sys/stat.h>

namespace MWCore::mwfile {
namespace {

/// What leads elsewhere says to what; anything else says what people call it, if that is more.
std::string kindText(const MXFileSystemObject &item) {
    if (const char *const word = nodeWord(item.nodeKind()))
        return word;
    if (item.isBrokenLink())
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

std::string countText(int32_t count, const char *one, const char *many) {
    return groupedDigits(count) + " " + (count == 1 ? one : many);
}

std::string contentsText(const MXFileSystemObject &folder) {
    return countText(folder.subFolderCount(), "folder", "folders") + ", " +
           countText(folder.fileCount(), "file", "files");
}

void addPermissions(Facts &facts, const MXFileSystemObject &item) {
    if (item.isSymbolicLink() && !item.isLink())
        return; // leads nowhere
    const int32_t number = permissionNumber(item);
    facts.add("Permissions", permissionsText(number) + " (" + std::to_string(number) + ")" +
                                 (item.isLink() ? ", of what it leads to" : ""));
    if (const uint32_t special = item.mode() & (S_ISUID | S_ISGID | S_ISVTX))
        facts.add("Special", specialText(special));
}

void addMetadata(Facts &facts, const MXFileSystemObject &item, const Colours &colours) {
    const ItemMetadata metadata = item.metadata(kShownMetadata);
    if (const auto seconds = secondsCreated(metadata))
        facts.add("Created", DisplayText(dateText(*seconds)).text());
    facts.addText("Volume", item.volumeName());
    const MXLabel::Ptr label = labelNumbered(metadata.labelNumber());
    if (label->id() != 0)
        facts.add("Label", colours.dot(*label) + labelText(*label));
    if (const auto type = codeText(metadata.type()))
        facts.add("Type", DisplayText(*type).text());
    if (const auto creator = codeText(metadata.creator()))
        facts.add("Creator", DisplayText(*creator).text());
    if (metadata.isInvisible())
        facts.add("Invisible", "yes");
    if (isLocked(item, metadata))
        facts.add("Locked", "yes");
}

/// The item's path as a heading and below it what is known.
std::string description(const DescribedItem &described, const Colours &colours) {
    const MXFileSystemObject &item = *described.object;
    Facts facts(colours);
    facts.add("Kind", kindText(item));
    if (const auto target = isPointer(item) ? finalTarget(item) : std::nullopt)
        facts.add("Leads to", DisplayText(*target).text());
    facts.addText("Version", item.versionString());
    if (item.isDir())
        facts.add("Contains", described.contentsError == noErr
                                  ? contentsText(item)
                                  : statusText(described.contentsError));
    else
        facts.add("Size", wholeSize(item.size()));
    addPermissions(facts, item);
    facts.addText("Owner", item.owner());
    facts.addText("Group", item.group());
    facts.add("Hard links", groupedDigits(item.links()));
    facts.addText("Modified", item.date());
    addMetadata(facts, item, colours);
    return colours.name(item, DisplayText(bytesOf(item.completePath())).text()) + "\n" +
           facts.text();
}

std::string json(const DescribedItem &described) {
    const MXFileSystemObject &item = *described.object;
    JsonObject object = itemJson(item, item.metadata(kShownMetadata), finalTarget(item));
    object.textOrNull("kindAsString", item.kindAsString());
    object.textOrNull("volumeName", item.volumeName());
    object.textOrNull("versionString", item.versionString());
    if (item.isDir() && described.contentsError == noErr) {
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
