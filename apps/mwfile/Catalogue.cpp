// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/Catalogue.h"

#include "apps/mwfile/bytes.h"
#include "apps/mwfile/Failure.h"
#include "apps/mwfile/LocalItem.h"
#include "model/values/MXLabelManager.h"
#include "platform/metadata/FinderInfoGlance.h"

#include <ctime>
#include <string_view>

namespace MWCore::mwfile {

namespace {

constexpr std::string_view kSidecarPrefix = "._";

/// Beside what the library's listing may take.
constexpr TimeAllowance::Limits kForRows = {.fixed = 35'000'000, .share = 20};

Marks marksFrom(const MXFileSystemObject &item, const FinderInfo &finderInfo) {
    FSCatalogInfo info;
    // Asked apart from the Finder information, so that the one fails without the other.
    (void)FSGetCatalogInfoForPath(item.cstruct()->complete_path,
                                  kFSCatInfoNodeFlags | kFSCatInfoCreateDate, &info);
    Marks marks = {.label = labelNumbered(finderInfo.labelNumber()),
                   .type = finderInfo.type,
                   .creator = finderInfo.creator,
                   .isInvisible = finderInfo.flags.testFlag(kIsInvisible),
                   .isLocked = !item.isPackage() && info.nodeFlags.testFlag(kFSNodeLockedMask),
                   .created = std::nullopt};
    if (info.createDate != 0)
        marks.created = timeFrom(info.createDate).tv_sec;
    return marks;
}

} // namespace

Marks marksOf(const MXFileSystemObject &item) {
    FinderInfo info;
    (void)readFinderInfo(item.cstruct()->complete_path, &info);
    return marksFrom(item, info);
}

RowLooks::RowLooks(const MXFileSystemObject &folder) : allowance_(kForRows), aliases_(allowance_) {
    // Sidecars are no folders.
    for (int32_t index = 0; index < folder.fileCount(); ++index) {
        const std::string_view name = folder.child_fso_at_index(index)->cstruct()->name;
        if (name.starts_with(kSidecarPrefix))
            described_.emplace(name.substr(kSidecarPrefix.size()));
    }
}

Marks RowLooks::marksOf(const MXFileSystemObject &item) {
    const bool isDescribed =
        !described_.empty() && described_.contains(std::string(item.cstruct()->name));
    FinderInfo info;
    const bool isWhole = readFinderInfoWithin(allowance_, item.cstruct()->complete_path, &info,
                                              isDescribed ? Sidecars::MayExist : Sidecars::Absent);
    Marks marks = marksFrom(item, isWhole ? info : FinderInfo());
    marks.isWhole = isWhole;
    return marks;
}

std::optional<std::string> RowLooks::targetOf(const MXFileSystemObject &item) {
    QByteArray target;
    if (!item.isAlias())
        return linkTarget(item);
    if (isLost(item) || aliases_.resolve(item.cstruct()->complete_path, &target) != noErr)
        return std::nullopt;
    return target.toStdString();
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
