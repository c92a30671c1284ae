// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/Remarks.h"

#include "apps/mwfile/bytes.h"
#include "apps/mwfile/DisplayText.h"
#include "apps/mwfile/ItemJson.h"
#include "apps/mwfile/LocalItem.h"

#include <vector>

namespace MWCore::mwfile {
namespace {

/// The kind where the letter before the permissions does not tell it; else empty.
std::string kindRemark(const MXFileSystemObject &item) {
    switch (item.fsoKind()) {
    case MXItemKindAlias:
    case MXItemKindApplication:
    case MXItemKindPackage:
        return kindWord(item.fsoKind());
    case MXItemKindVolume: {
        const std::string name = bytesOf(item.name());
        return name == item.cstruct()->name ? "volume" : "volume " + DisplayText(name).text();
    }
    default:
        return {};
    }
}

std::string destination(const MXFileSystemObject &item, const std::optional<std::string> &target) {
    if (target)
        return DisplayText(*target).text();
    if (item.isAlias())
        return "not looked for";
    return item.cstruct()->target_type == MFS_TARGET_UNKNOWN ? "nowhere"
                                                             : "something without a path";
}

} // namespace

std::string arrow(const MXFileSystemObject &item, const std::optional<std::string> &target,
                  const Colours &colours) {
    return isPointer(item) ? colours.quiet("-> " + destination(item, target)) : "";
}

std::string remarks(const MXFileSystemObject &item, const Marks &marks, const Colours &colours) {
    std::vector<std::string> words;
    if (const std::string kind = kindRemark(item); !kind.empty())
        words.push_back(colours.quiet(kind));
    if (marks.label->id() != 0)
        words.push_back(colours.dot(*marks.label) + colours.quiet(labelText(*marks.label)));
    if (marks.isLocked)
        words.push_back(colours.quiet("locked"));
    if (marks.isInvisible)
        words.push_back(colours.quiet("invisible"));
    if (!marks.isWhole)
        words.push_back(colours.quiet("label not looked for"));
    std::string text;
    for (const std::string &word : words)
        text.append(colours.quiet(text.empty() ? "(" : ", ")).append(word);
    return text.empty() ? text : text + colours.quiet(")");
}

} // namespace MWCore::mwfile
