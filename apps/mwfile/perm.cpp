// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "commands.h"
#include "Failure.h"
#include "JsonObject.h"
#include "Output.h"
#include "PermissionText.h"

#include <MWCore/mfs_permissions.h>

#include <cstdio>
#include <optional>
#include <string_view>

namespace MWCore::mwfile {
namespace {

constexpr std::string_view kOctalDigits = "01234567";

bool isOctal(std::string_view digits) {
    return !digits.empty() && digits.find_first_not_of(kOctalDigits) == std::string_view::npos;
}

uint32_t octalValue(std::string_view digits) {
    uint32_t value = 0;
    for (const char digit : digits)
        value = value * 8 + static_cast<uint32_t>(digit - '0');
    return value;
}

/// "0755", "04755": a mode word, which starts with a zero.
std::optional<uint32_t> modeFromMode(std::string_view value) {
    constexpr std::size_t kLongest = 5; // 07777
    if (value.size() < 2 || value.size() > kLongest || value[0] != '0' || !isOctal(value))
        return std::nullopt;
    return octalValue(value);
}

/// "755": a permission number. The core's codec defines what fewer digits mean.
std::optional<uint32_t> modeFromNumber(std::string_view value) {
    constexpr std::size_t kLongest = 3;
    if (value.size() > kLongest || !isOctal(value))
        return std::nullopt;
    return mfs_permissions_octal_to_mode(std::stoi(std::string(value)));
}

/// "rwxr-xr-x", optionally after the type letter of a listing.
std::optional<uint32_t> modeFromText(std::string_view value) {
    constexpr std::string_view kAllRights = "rwxrwxrwx";
    constexpr std::string_view kTypeLetters = "-bcdlps";
    if (value.size() == kAllRights.size() + 1) {
        if (kTypeLetters.find(value[0]) == std::string_view::npos)
            return std::nullopt;
        value.remove_prefix(1);
    }
    if (value.size() != kAllRights.size())
        return std::nullopt;
    for (std::size_t index = 0; index < value.size(); ++index)
        if (value[index] != '-' && value[index] != kAllRights[index])
            return std::nullopt;
    const std::string listing = "-" + std::string(value);
    return modeOfNumber(mfs_permissions_string_to_octal(listing.c_str()));
}

uint32_t modeFrom(const std::string &value) {
    for (const auto &read : {modeFromMode, modeFromNumber, modeFromText})
        if (const auto mode = read(value))
            return *mode;
    if (isOctal(value))
        throw UsageFailure(value,
                           "a mode must start with 0 (04755); a number has up to three digits");
    if (value.find_first_not_of("-bcdlprwxsStT") == std::string::npos)
        throw UsageFailure(value,
                           "set-id and sticky letters are not supported; use a mode (04755)");
    throw UsageFailure(value, "not a permission number (755), text (rwxr-xr-x) or mode (0755)");
}

struct Permissions {
    int32_t number = 0;
    unsigned char sticky = 0;
    unsigned char setgid = 0;
    unsigned char setuid = 0;
};

/// Four digits, or five if there are special bits: "0755", "04755".
std::string modeText(uint32_t mode) {
    char text[16];
    std::snprintf(text, sizeof text, "%#.4o", mode);
    return text;
}

/// The rights of one triple in words; @p read is its read bit.
std::string rightsText(uint32_t mode, uint32_t read) {
    return wordsFor(mode, {{read, "read"}, {read >> 1, "write"}, {read >> 2, "execute"}});
}

} // namespace

void perm(const PermOptions &options) {
    const uint32_t mode = modeFrom(options.value);
    Permissions permissions;
    permissions.number =
        modetToPerms(mode, &permissions.sticky, &permissions.setgid, &permissions.setuid);
    if (options.form == Form::Json) {
        JsonObject json;
        json.number("permissions", permissions.number)
            .text("permissionsAsString", permissionsText(permissions.number))
            .text("mode", modeText(mode))
            .boolean("hasSuidBit", permissions.setuid)
            .boolean("hasSgidBit", permissions.setgid)
            .boolean("hasStickyBit", permissions.sticky);
        print(json.finished() + "\n");
        return;
    }
    print("Number   " + std::to_string(permissions.number) + "\n");
    print("Text     " + permissionsText(permissions.number) + "\n");
    print("Mode     " + modeText(mode) + "\n");
    print("Owner    " + rightsText(mode, 0400) + "\n");
    print("Group    " + rightsText(mode, 0040) + "\n");
    print("Others   " + rightsText(mode, 0004) + "\n");
    print("Special  " + specialText(mode) + "\n");
}

} // namespace MWCore::mwfile
