// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "commands.h"
#include "DisplayText.h"
#include "Failure.h"
#include "ItemJson.h"
#include "LabelledLines.h"
#include "LocalItem.h"
#include "Output.h"
#include "SizeText.h"
#include "StatusLine.h"
#include "TextBytes.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <memory>

#include <unistd.h>

namespace MWCore::mwfile {
namespace {

/// While it exists, the first Ctrl-C stops the measurement, and the second one ends the program.
class InterruptHandler {
public:
    explicit InterruptHandler(MXFileSystemObject &item) {
        item_ = &item;
        struct sigaction action = {};
        action.sa_handler = [](int) { item_.load()->cancelFolderSizeCalulation(); };
        action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
        sigaction(SIGINT, nullptr, &before_);
        if (before_.sa_handler != SIG_IGN) // shells ignore it for background processes
            sigaction(SIGINT, &action, nullptr);
    }
    InterruptHandler(const InterruptHandler &) = delete;
    InterruptHandler &operator=(const InterruptHandler &) = delete;
    ~InterruptHandler() { sigaction(SIGINT, &before_, nullptr); }

private:
    static inline std::atomic<MXFileSystemObject *> item_; // all that a signal handler may use
    static_assert(decltype(item_)::is_always_lock_free);
    struct sigaction before_ = {};
};

std::string progressText(const MXSizeProgress &progress, std::chrono::duration<double> elapsed) {
    const auto perSecond = static_cast<int64_t>(double(progress.entries) / elapsed.count());
    const SizeText size = shortSize(static_cast<int64_t>(progress.bytes));
    return groupedDigits(static_cast<int64_t>(progress.entries)) + " entries, " + size.number +
           (size.unit.empty() ? " bytes" : " " + size.unit) + ", " + groupedDigits(perSecond) +
           " entries/s";
}

/// Why an item cannot be measured.
std::string failureReason(const MXFileSystemObject &item) {
    using Part = ItemMetadata::Part;
    const ItemMetadata metadata = item.metadata({Part::Inode, Part::ResourceFork});
    for (const Part part : {Part::Inode, Part::ResourceFork})
        if (!metadata.isKnown(part))
            return statusText(metadata.status(part));
    return "its volume reports no sizes";
}

MXSizeMeasurement measured(const SizeOptions &options, MXFileSystemObject &item) {
    using Clock = std::chrono::steady_clock;
    MXSizeOptions how;
    how.countsHardLinksOnce = options.linksOnce;
    how.countsSidecarForksOnce = options.sidecarsOnce;
    how.staysOnVolume = options.oneFileSystem;
    how.walksVolume = options.walk;
    how.listsUnreadable = options.errors; // there may be millions
    StatusLine line;
    if (line.isVisible())
        how.progress = [&line, start = Clock::now()](const MXSizeProgress &progress) {
            line.show(progressText(progress, Clock::now() - start));
        };
    const InterruptHandler interruptHandler(item);
    const auto measurement = item.measureSize(how);
    if (!measurement)
        throw Failure(options.path, failureReason(item));
    return *measurement;
}

std::string itemsText(uint64_t count) {
    return groupedDigits(static_cast<int64_t>(count)) + (count == 1 ? " item" : " items");
}

std::string text(const MXFileSystemObject &item, bool isVolume,
                 const MXSizeMeasurement &measurement, bool listsErrors) {
    const Colours colours;
    LabelledLines lines(colours);
    const MXFSOSizeRecord &record = measurement.record;
    const auto size = MXFileSystemObjectSize::initWithLocalFileSize(record);
    if (isVolume) {
        lines.addText("Capacity", size->capacityGetInfoString());
        lines.addText("Available", size->availableGetInfoString());
        lines.addText("Used", size->usedGetInfoString());
        lines.add("Contains", itemsText(record.containedItemCount));
    } else {
        lines.addText("Size", size->totalSizeGetInfoString());
        if (record.resourceForkSize > 0) {
            lines.addText("Data", size->dataGetInfoString());
            lines.addText("Resources", size->resourceGetInfoString());
        }
        if (item.isDir())
            lines.addText("Contains", size->containsGetInfo());
    }
    if (measurement.unreadableCount > 0)
        lines.add("Unreadable", itemsText(measurement.unreadableCount) +
                                    (listsErrors ? ":" : " (--errors lists them)"));
    if (listsErrors)
        for (const MXUnreadableItem &unreadable : measurement.unreadable)
            lines.add("", DisplayText(bytesOf(unreadable.path)).text() + ": " +
                              statusText(unreadable.status));
    if (measurement.isPartial)
        lines.add("Interrupted", "the sums are partial");
    return colours.name(item, DisplayText(bytesOf(item.completePath())).text()) + "\n" +
           lines.text();
}

std::string json(const MXFileSystemObject &item, const MXSizeMeasurement &measurement,
                 bool listsErrors) {
    const MXFSOSizeRecord &record = measurement.record;
    JsonObject object;
    object.textOrNull("completePath", item.completePath());
    object.text("kind", kindWord(item.fsoKind()));
    object.number("dataForkSize", record.dataForkSize);
    object.number("physicalDataForkSize", record.physicalDataForkSize);
    object.number("resourceForkSize", record.resourceForkSize);
    object.number("physicalResourceForkSize", record.physicalResourceForkSize);
    object.number("volumeFreeBytes", record.volumeFreeBytes);
    object.number("totalSize", record.totalSize);
    object.number("physicalTotalSize", record.physicalTotalSize);
    object.number("containedItemCount", record.containedItemCount);
    object.number("containedFolderCount", record.containedFolderCount);
    object.number("containedFileCount", record.containedFileCount);
    object.number("hiddenItemCount", record.hiddenItemCount);
    object.boolean("isPartial", measurement.isPartial);
    object.number("unreadableCount", measurement.unreadableCount);
    if (!listsErrors)
        return object.finished();
    std::vector<JsonObject> unreadable;
    for (const MXUnreadableItem &missing : measurement.unreadable)
        unreadable.push_back(JsonObject()
                                 .textOrNull("path", missing.path)
                                 .text("reason", statusText(missing.status)));
    return object.objects("unreadable", unreadable).finished();
}

} // namespace

bool size(const SizeOptions &options) {
    const MXFileSystemObject::Ptr object = itemAtPath(options.path);
    MXFileSystemObject &item = *object;
    const MXSizeMeasurement measurement = measured(options, item);
    if (measurement.unreadableCount > 0 && measurement.record.containedItemCount == 0)
        throw Failure(options.path, // the folder itself could not be read
                      eaccess(item.pathBytes().constData(), R_OK) == 0 ? EIO : errno);
    const bool isVolume = item.isVolume() && !options.walk;
    print(options.form == Form::Json ? json(item, measurement, options.errors) + "\n"
                                     : text(item, isVolume, measurement, options.errors));
    finishOutput();
    if (measurement.isPartial)
        printError(options.path + ": interrupted, the sums are partial");
    if (measurement.unreadableCount > 0)
        printError(options.path + ": " + itemsText(measurement.unreadableCount) +
                   " could not be read, so the sums are too small");
    return !measurement.isPartial && measurement.unreadableCount == 0;
}

} // namespace MWCore::mwfile
