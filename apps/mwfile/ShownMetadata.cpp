// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "ShownMetadata.h"

#include "Failure.h"
#include "LocalItem.h"
#include "TextBytes.h"

#include <MWCore/MXLabelManager.h>

#include <ctime>

namespace MWCore::mwfile {

std::optional<std::string> RowInspection::targetOf(const MXFileSystemObject &item) {
    QByteArray target;
    if (!item.isAlias())
        return linkTarget(item);
    if (isTargetUnknown(item) || aliases_.resolve(item.pathBytes(), &target) != noErr)
        return std::nullopt;
    return target.toStdString();
}

bool isIncomplete(const ItemMetadata &metadata) {
    return metadata.status(ItemMetadata::Part::FinderInfo) == fileBoundsErr;
}

bool isLocked(const MXFileSystemObject &item, const ItemMetadata &metadata) {
    return !item.isPackage() && metadata.isLocked();
}

std::optional<int64_t> secondsCreated(const ItemMetadata &metadata) {
    const auto date = metadata.dateCreated();
    return date ? std::optional<int64_t>(timeFrom(*date).tv_sec) : std::nullopt;
}

FSRef referenceTo(const std::string &path) {
    FSRef ref;
    if (const OSStatus status = FSPathMakeRef(QByteArray::fromStdString(path), &ref);
        status != noErr)
        throw Failure(path, status);
    return ref;
}

std::optional<std::string> codeText(uint32_t code) {
    constexpr uint32_t kNoCode = 0xFFFFFFFF;
    if (code == 0 || code == kNoCode)
        return std::nullopt;
    std::string text;
    for (const int shift : {24, 16, 8, 0})
        text += static_cast<char>(code >> shift);
    return text;
}

MXLabel::Ptr labelWithNumber(int number) {
    return MXLabelManager::sharedLabelManager()->labelWithID(static_cast<uint16_t>(number));
}

std::string labelText(const MXLabel &label) {
    return bytesOf(label.description());
}

} // namespace MWCore::mwfile
