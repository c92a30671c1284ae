// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/Catalogue.h"

#include "apps/mwfile/bytes.h"
#include "apps/mwfile/Failure.h"
#include "model/MXLabelManager.h"

#include <ctime>
#include <string_view>

namespace MWCore::mwfile {

Marks marksOf(const MXFileSystemObject &item, Sidecars sidecars) {
    const QByteArray path = item.cstruct()->complete_path;
    FSCatalogInfo info;
    // Asked apart, so that the one fails without the other.
    (void)FSGetCatalogInfoForPath(path, kFSCatInfoNodeFlags | kFSCatInfoCreateDate, &info);
    (void)readFinderInfo(path, &info.finderInfo, sidecars);
    Marks marks = {.label = labelNumbered(info.finderInfo.labelNumber()),
                   .type = info.finderInfo.type,
                   .creator = info.finderInfo.creator,
                   .isInvisible = (info.finderInfo.flags & kIsInvisible) != 0,
                   .isLocked = !item.isPackage() && (info.nodeFlags & kFSNodeLockedMask) != 0,
                   .created = std::nullopt};
    if (info.createDate != 0)
        marks.created = timeFrom(info.createDate).tv_sec;
    return marks;
}

Sidecars sidecarsIn(const MXFileSystemObject &folder) {
    // They are no folders.
    for (int32_t index = 0; index < folder.fileCount(); ++index)
        if (std::string_view(folder.child_fso_at_index(index)->cstruct()->name).starts_with("._"))
            return Sidecars::MayExist;
    return Sidecars::Absent;
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

MXLabel::Ptr labelNumbered(int number) {
    return MXLabelManager::sharedLabelManager()->labelWithID(static_cast<uint16_t>(number));
}

std::string labelText(const MXLabel &label) {
    return bytesOf(label.description());
}

} // namespace MWCore::mwfile
