// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "Colours.h"

#include "DisplayText.h"
#include "Output.h"

#include <cstdlib>

namespace MWCore::mwfile {
namespace {

// Select Graphic Rendition parameters (ECMA-48, section 8.3.117).
constexpr std::string_view kBegin = "\033[";
constexpr std::string_view kEnd = "m";
constexpr std::string_view kPlain;
constexpr std::string_view kDimmed = "2";
constexpr std::string_view kFolder = "1;34";
constexpr std::string_view kPackage = "34";
constexpr std::string_view kApplication = "1;32";
constexpr std::string_view kLink = "36";
constexpr std::string_view kBrokenLink = "31";
constexpr std::string_view kExecutable = "32";
constexpr std::string_view kOtherNode = "33";
constexpr std::string_view kProblem = "31";

std::string_view environment(const char *name) {
    const char *const value = std::getenv(name);
    return value ? value : "";
}

bool isExecutable(const MXFileSystemObject &item) {
    constexpr uint32_t kAnyExecute = 0111;
    return (item.mode() & kAnyExecute) != 0;
}

std::string_view attributesFor(const MXFileSystemObject &item) {
    switch (item.fsoKind()) {
    case MXItemKindFolder:
    case MXItemKindVolume:
        return kFolder;
    case MXItemKindPackage:
        return kPackage;
    case MXItemKindApplication:
        return kApplication;
    case MXItemKindLink:
    case MXItemKindAlias:
        return kLink;
    case MXItemKindFile:
        return isExecutable(item) ? kExecutable : kPlain;
    default:
        return item.isSymbolicLink() ? kBrokenLink : kOtherNode;
    }
}

/// A direct colour (ISO 8613-6); terminals with fewer colours use the nearest one.
std::string attributesFor(const QColor &color) {
    return "38;2;" + std::to_string(color.red()) + ";" + std::to_string(color.green()) + ";" +
           std::to_string(color.blue());
}

} // namespace

Colours::Colours()
    : on_(printsToTerminal() && environment("NO_COLOR").empty() && environment("TERM") != "dumb") {}

std::string Colours::name(const MXFileSystemObject &item, std::string_view text) const {
    return styled(attributesFor(item), text);
}

std::string Colours::dimmed(std::string_view text) const {
    return styled(kDimmed, text);
}

std::string Colours::problem(std::string_view text) const {
    return styled(kProblem, text);
}

std::string Colours::dot(const MXLabel &label) const {
    return on_ ? styled(attributesFor(label.color()), "● ") : "";
}

std::string Colours::styled(std::string_view attributes, std::string_view text) const {
    std::string result;
    if (!on_ || attributes.empty())
        return result.append(text);
    return result.append(kBegin).append(attributes).append(kEnd).append(text).append("\033[0m");
}

int columnsOf(std::string_view text) {
    std::string plain;
    for (std::size_t begin = text.find(kBegin); begin != std::string_view::npos;
         begin = text.find(kBegin)) {
        plain += text.substr(0, begin);
        text.remove_prefix(text.find(kEnd, begin) + kEnd.size());
    }
    return DisplayText(plain.append(text), Backslash::Plain).columns();
}

} // namespace MWCore::mwfile
