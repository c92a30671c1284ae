// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "commands.h"
#include "DisplayText.h"
#include "Failure.h"
#include "IconSource.h"
#include "ItemJson.h"
#include "LabelledLines.h"
#include "LocalItem.h"
#include "Output.h"
#include "PermissionText.h"
#include "PictureLayout.h"
#include "ShownMetadata.h"
#include "SizeText.h"
#include "TerminalPictures.h"
#include "TextBytes.h"

#include <MWCore/mfs_date.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <optional>

#include <sys/stat.h>
#include <unistd.h>

namespace MWCore::mwfile {
namespace {

/// The kind and, for a link or alias, the kind of its target, otherwise the desktop's name for it.
std::string kindText(const MXFileSystemObject &item) {
    if (const char *const word = nodeWord(item.nodeKind()))
        return word;
    if (item.isBrokenLink())
        return "broken link";
    const std::string word = kindWord(item.fsoKind());
    if (item.isAlias() && isTargetUnknown(item))
        return word + " to an item that was moved or deleted";
    if (isLinkOrAlias(item))
        return word + " to a " +
               (item.aliasOrLinkTargetKind() == MXItemKindUnknown
                    ? "device, fifo or socket"
                    : kindWord(item.aliasOrLinkTargetKind()));
    const QString name = item.kindAsString();
    const bool isDifferent =
        !name.isEmpty() && name.compare(QString::fromStdString(word), Qt::CaseInsensitive) != 0;
    return isDifferent ? word + " (" + DisplayText(bytesOf(name)).text() + ")" : word;
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

void addPermissions(LabelledLines &lines, const MXFileSystemObject &item) {
    if (item.isSymbolicLink() && !item.isLink())
        return; // broken
    const int32_t number = permissionNumber(item);
    lines.add("Permissions", permissionsText(number) + " (" + std::to_string(number) + ")" +
                                 (item.isLink() ? ", of the target" : ""));
    if (const uint32_t special = item.mode() & (S_ISUID | S_ISGID | S_ISVTX))
        lines.add("Special", specialText(special));
}

void addMetadata(LabelledLines &lines, const MXFileSystemObject &item, const Colours &colours) {
    const ItemMetadata metadata = item.metadata(kShownMetadata);
    if (const auto seconds = secondsCreated(metadata))
        lines.add("Created", DisplayText(dateText(*seconds)).text());
    lines.addText("Volume", item.volumeName());
    const MXLabel::Ptr label = labelWithNumber(metadata.labelNumber());
    if (label->id() != 0)
        lines.add("Label", colours.dot(*label) + labelText(*label));
    if (const auto type = codeText(metadata.type()))
        lines.add("Type", DisplayText(*type).text());
    if (const auto creator = codeText(metadata.creator()))
        lines.add("Creator", DisplayText(*creator).text());
    if (metadata.isInvisible())
        lines.add("Invisible", "yes");
    if (isLocked(item, metadata))
        lines.add("Locked", "yes");
}

LabelledLines properties(const ItemWithContents &described, const Colours &colours) {
    const MXFileSystemObject &item = *described.object;
    LabelledLines lines(colours);
    lines.add("Kind", kindText(item));
    if (const auto target = isLinkOrAlias(item) ? finalTarget(item) : std::nullopt)
        lines.add("Target", DisplayText(*target).text());
    lines.addText("Version", item.versionString());
    if (item.isDir())
        lines.add("Contains", described.contentsError == noErr
                                  ? contentsText(item)
                                  : statusText(described.contentsError));
    else
        lines.add("Size", wholeSize(item.size()));
    addPermissions(lines, item);
    lines.addText("Owner", item.owner());
    lines.addText("Group", item.group());
    lines.add("Hard links", groupedDigits(item.links()));
    lines.addText("Modified", item.date());
    addMetadata(lines, item, colours);
    return lines;
}

/// Prints a note if no pictures can be shown.
bool canShow(const TerminalPictures &pictures) {
    if (!pictures.obstacle().empty())
        printError("--icon: " + pictures.obstacle() + "; use mwfile icon export");
    return pictures.obstacle().empty();
}

/// The item's path as a heading, followed by its properties, with its icon on their left if
/// @p pictures is not null.
std::string description(const ItemWithContents &described, const TerminalPictures *pictures) {
    constexpr int kUsualColumns = 80;
    const Colours colours;
    const MXFileSystemObject &item = *described.object;
    const std::string path = bytesOf(item.completePath());
    const std::string heading = colours.name(item, DisplayText(path).text()) + "\n";
    const LabelledLines lines = properties(described, colours);
    if (!pictures)
        return heading + lines.text();
    const PictureRoom &room = pictures->room();
    const std::string drawing = pictures->drawing(shownIcon(item, path, room.pixels));
    const int columns = terminalColumns(STDOUT_FILENO).value_or(kUsualColumns);
    return heading + withPicture(drawing, room, lines, columns);
}

std::string json(const ItemWithContents &described) {
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
    std::optional<TerminalPictures> terminal;
    if (options.icon)
        terminal.emplace();
    const TerminalPictures *const pictures = terminal && canShow(*terminal) ? &*terminal : nullptr;
    std::vector<std::string> texts;
    for (const std::string &path : options.paths) {
        try {
            const ItemWithContents item = itemWithContents(path);
            texts.push_back(options.form == Form::Json ? json(item) : description(item, pictures));
        } catch (const Failure &failure) {
            printError(failure.what());
        }
    }
    const bool isArray = options.form == Form::Json && options.paths.size() > 1;
    if (isArray)
        print("[\n" + joined(texts, ",\n") + "\n]\n");
    else if (!texts.empty())
        print(joined(texts, "\n") + (options.form == Form::Json ? "\n" : ""));
    finishOutput(); // before late answers of the terminal are waited for
    return texts.size() == options.paths.size();
}

} // namespace MWCore::mwfile
