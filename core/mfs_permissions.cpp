// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_permissions.h"

#include "core/posix/allocation.h"

#include <array>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>

namespace {

constexpr int kFlagCount = 9;
constexpr const char *kTripleTexts[] = {"---", "--x", "-w-", "-wx", "r--", "r-x", "rw-", "rwx"};

/// The rights of owner, group and others: 0 to 7, or kNoDigit for a missing or non-octal digit.
using Triples = std::array<int, 3>;
constexpr int kNoDigit = -1;

static_assert(sizeof(mfs_perms) == sizeof(uint32_t));

uint32_t wordOf(const mfs_perms &perms) {
    uint32_t word;
    std::memcpy(&word, &perms, sizeof word);
    return word;
}

uint32_t flagAt(int32_t index) {
    return index >= 0 && index < kFlagCount ? 1U << index : 0;
}

/// Flag 0 is the mode's highest permission bit.
constexpr uint32_t modeBitAt(int index) {
    return 0400U >> index;
}

int32_t numberOf(const Triples &triples) {
    return triples[0] * 100 + triples[1] * 10 + triples[2];
}

/// The digits of the number from the left. A number of two characters has no owner digit.
Triples triplesOf(int32_t number) {
    const auto octal = [](int32_t digit) { return digit <= 7 ? digit : kNoDigit; };
    if (number >= 100 && number <= 999) // the usual case; snprintf() would dominate its time
        return {octal(number / 100), octal(number / 10 % 10), octal(number % 10)};
    char text[16] = {};
    const int length = std::snprintf(text, sizeof text, "%d", number);
    const bool withoutOwner = length == 2;
    Triples triples;
    const char *next = text;
    for (std::size_t triple = 0; triple < triples.size(); ++triple) {
        const char digit = triple == 0 && withoutOwner ? '0' : *next++;
        triples[triple] = digit >= '0' && digit <= '7' ? digit - '0' : kNoDigit;
    }
    return triples;
}

uint32_t modeOf(const Triples &triples) {
    uint32_t mode = 0;
    for (const int triple : triples)
        mode = mode << 3 | (triple == kNoDigit ? 0U : static_cast<uint32_t>(triple));
    return mode;
}

int tripleValue(std::string_view letters) {
    const auto valueIfPresent = [letters](char letter, int value) {
        return letters.find(letter) == std::string_view::npos ? 0 : value;
    };
    return valueIfPresent('r', 4) + valueIfPresent('w', 2) + valueIfPresent('x', 1);
}

} // namespace

void mfs_toggle_permission(int32_t index, mfs_perms *perms) {
    if (!perms)
        return;
    const uint32_t word = wordOf(*perms) ^ flagAt(index);
    std::memcpy(perms, &word, sizeof word);
}

int mfs_check_for_permission(int32_t index, const mfs_perms *perms) {
    return perms && (wordOf(*perms) & flagAt(index)) != 0;
}

int32_t mfs_permissions_perms_to_octal(const mfs_perms *perms) {
    uint32_t mode = 0;
    for (int index = 0; index < kFlagCount; ++index)
        if (mfs_check_for_permission(index, perms))
            mode |= modeBitAt(index);
    return mfs_get_perms_from_mode(mode);
}

mfs_perms *mfs_permissions_octal_to_perms(int32_t number) {
    void *const block = MWCore::allocate(sizeof(mfs_perms), "mfs_permissions_octal_to_perms");
    if (!block)
        return nullptr;
    const uint32_t mode = modeOf(triplesOf(number));
    uint32_t word = 0;
    for (int index = 0; index < kFlagCount; ++index)
        if (mode & modeBitAt(index))
            word |= flagAt(index);
    std::memcpy(block, &word, sizeof word);
    return static_cast<mfs_perms *>(block);
}

char *mfs_permissions_octal_to_string(int32_t number) {
    constexpr std::size_t kTripleLength = 3;
    constexpr std::size_t kTextSize = 3 * kTripleLength + 1;
    auto *const text =
        static_cast<char *>(MWCore::allocate(kTextSize, "mfs_permissions_octal_to_string"));
    if (!text)
        return nullptr;
    std::memset(text, 0, kTextSize);
    char *end = text;
    for (const int triple : triplesOf(number)) {
        if (triple == kNoDigit)
            continue;
        std::memcpy(end, kTripleTexts[triple], kTripleLength);
        end += kTripleLength;
    }
    return text;
}

uint16_t mfs_permissions_octal_to_mode(int32_t number) {
    return static_cast<uint16_t>(modeOf(triplesOf(number)));
}

int32_t mfs_permissions_string_to_octal(const char *text) {
    constexpr std::size_t kListingLength = 10;
    if (!text || std::strlen(text) < kListingLength)
        return -1;
    return numberOf(
        {tripleValue({text + 1, 3}), tripleValue({text + 4, 3}), tripleValue({text + 7, 3})});
}

int32_t mfs_get_perms_from_mode(uint32_t mode) {
    return numberOf({static_cast<int>(mode >> 6 & 7), static_cast<int>(mode >> 3 & 7),
                     static_cast<int>(mode & 7)});
}

int32_t modetToPerms(uint32_t mode, unsigned char *sticky_out, unsigned char *setgid_out,
                     unsigned char *setuid_out) {
    if (sticky_out)
        *sticky_out = (mode & S_ISVTX) != 0;
    if (setgid_out)
        *setgid_out = (mode & S_ISGID) != 0;
    if (setuid_out)
        *setuid_out = (mode & S_ISUID) != 0;
    return mfs_get_perms_from_mode(mode);
}
