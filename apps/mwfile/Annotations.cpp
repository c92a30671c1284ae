// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "Annotations.h"

#include "DisplayText.h"
#include "ItemJson.h"
#include "LocalItem.h"
#include "TextBytes.h"

#include <vector>

namespace MWCore::mwfile {
namespace {

/// The kind; empty if the letter before the permissions already gives it.
std::string kindAnnotation(const MXFileSystemObject &item) {
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

std::string targetAnnotation(const MXFileSystemObject &item,
                             const std::optional<std::string> &target, const Colours &colours) {
    return isLinkOrAlias(item) ? colours.dimmed("-> " + destination(item, target)) : "";
}

std::string annotations(const MXFileSystemObject &item, const ItemMetadata &metadata,
                        const Colours &colours) {
    std::vector<std::string> words;
    if (const std::string kind = kindAnnotation(item); !kind.empty())
        words.push_back(colours.dimmed(kind));
    if (const int number = metadata.labelNumber(); number != 0) {
        const MXLabel::Ptr label = labelWithNumber(number);
        words.push_back(colours.dot(*label) + colours.dimmed(labelText(*label)));
    }
    if (isLocked(item, metadata))
        words.push_back(colours.dimmed("locked"));
    if (metadata.isInvisible())
        words.push_back(colours.dimmed("invisible"));
    if (isIncomplete(metadata))
        words.push_back(colours.dimmed("label not looked for"));
    std::string text;
    for (const std::string &word : words)
        text.append(colours.dimmed(text.empty() ? "(" : ", ")).append(word);
    return text.empty() ? text : text + colours.dimmed(")");
}

} // namespace MWCore::mwfile
