// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "PermissionText.h"

#include <string_view>

#include <sys/stat.h>

namespace MWCore::mwfile {

int32_t permissionNumber(const MXFileSystemObject &item) {
    return mfs_get_perms_from_mode(item.mode());
}

uint32_t modeOfNumber(int32_t permissions) {
    const auto digits = static_cast<uint32_t>(permissions);
    return (digits / 100 % 10) << 6 | (digits / 10 % 10) << 3 | digits % 10;
}

std::string permissionsText(int32_t permissions) {
    constexpr std::string_view kAllRights = "rwxrwxrwx";
    constexpr uint32_t kFirstRight = 0400;
    const uint32_t mode = modeOfNumber(permissions);
    std::string text(kAllRights);
    for (std::size_t index = 0; index < text.size(); ++index)
        if (!(mode & kFirstRight >> index))
            text[index] = '-';
    return text;
}

std::string wordsFor(uint32_t bits, std::initializer_list<BitWord> words) {
    std::string text;
    for (const BitWord &word : words)
        if (bits & word.bit)
            text.append(text.empty() ? "" : ", ").append(word.word);
    return text.empty() ? "none" : text;
}

std::string specialText(uint32_t mode) {
    return wordsFor(mode,
                    {{S_ISUID, "set user id"}, {S_ISGID, "set group id"}, {S_ISVTX, "sticky"}});
}

} // namespace MWCore::mwfile
