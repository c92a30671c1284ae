// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/Colours.h"

#include "apps/mwfile/PermissionText.h"

#include <cstdlib>

#include <unistd.h>

namespace MWCore::mwfile {
namespace {

// Select Graphic Rendition parameters (ECMA-48, section 8.3.117).
constexpr std::string_view kPlain;
constexpr std::string_view kQuiet = "2";
constexpr std::string_view kFolder = "1;34";
constexpr std::string_view kLink = "36";
constexpr std::string_view kDeadLink = "31";
constexpr std::string_view kExecutable = "32";
constexpr std::string_view kOtherNode = "33";

std::string_view environment(const char *name) {
    const char *const value = std::getenv(name);
    return value ? value : "";
}

bool isExecutable(const mfs_fso &item) {
    constexpr uint32_t kAnyExecute = 0111;
    return (modeOfNumber(item.permissions) & kAnyExecute) != 0;
}

std::string_view attributesFor(const mfs_fso &item) {
    switch (item.type) {
    case MFS_TYPE_DIRECTORY:
        return kFolder;
    case MFS_TYPE_LINK:
        return item.target_type == MFS_TARGET_UNKNOWN ? kDeadLink : kLink;
    case MFS_TYPE_FILE:
        return isExecutable(item) ? kExecutable : kPlain;
    default:
        return kOtherNode;
    }
}

} // namespace

Colours::Colours()
    : on_(isatty(STDOUT_FILENO) && environment("NO_COLOR").empty() &&
          environment("TERM") != "dumb") {}

std::string Colours::name(const mfs_fso &item, std::string_view text) const {
    return dressed(attributesFor(item), text);
}

std::string Colours::quiet(std::string_view text) const {
    return dressed(kQuiet, text);
}

std::string Colours::dressed(std::string_view attributes, std::string_view text) const {
    std::string result;
    if (!on_ || attributes.empty())
        return result.append(text);
    return result.append("\033[").append(attributes).append("m").append(text).append("\033[0m");
}

} // namespace MWCore::mwfile
