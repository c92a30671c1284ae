// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "Remarks.h"

#include "bytes.h"
#include "DisplayText.h"
#include "ItemJson.h"
#include "LocalItem.h"

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
        return name == nameInFolder(item) ? "volume" : "volume " + DisplayText(name).text();
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
    return item.isBrokenLink() ? "nowhere" : "something without a path";
}

} // namespace

std::string arrow(const MXFileSystemObject &item, const std::optional<std::string> &target,
                  const Colours &colours) {
    return isPointer(item) ? colours.quiet("-> " + destination(item, target)) : "";
}

std::string remarks(const MXFileSystemObject &item, const ItemMetadata &metadata,
                    const Colours &colours) {
    std::vector<std::string> words;
    if (const std::string kind = kindRemark(item); !kind.empty())
        words.push_back(colours.quiet(kind));
    if (const int number = metadata.labelNumber(); number != 0) {
        const MXLabel::Ptr label = labelNumbered(number);
        words.push_back(colours.dot(*label) + colours.quiet(labelText(*label)));
    }
    if (isLocked(item, metadata))
        words.push_back(colours.quiet("locked"));
    if (metadata.isInvisible())
        words.push_back(colours.quiet("invisible"));
    if (isCutShort(metadata))
        words.push_back(colours.quiet("label not looked for"));
    std::string text;
    for (const std::string &word : words)
        text.append(colours.quiet(text.empty() ? "(" : ", ")).append(word);
    return text.empty() ? text : text + colours.quiet(")");
}

} // namespace MWCore::mwfile
