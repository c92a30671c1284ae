// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_utility.h"

#include "core/posix/allocation.h"
#include "core/text_views.h"

#include <cstdio>
#include <cstring>

using MWCore::withoutBackSpaces;
using MWCore::withoutFrontSpaces;

namespace {

struct SizeUnit {
    int64_t from;    ///< the smallest number of bytes in the range
    int64_t divisor; ///< bytes in one unit
    const char *text;
};

constexpr SizeUnit kSizeUnits[] = {
    {1'024'000'000, 1'024'000'000, "GB"},
    {1'024'000, 1'024'000, "MB"},
    {1'024, 1'024, "k"},
    {INT64_MIN, 1, ""},
};

} // namespace

int32_t mfs_utility_front_spaces(const char *text) {
    if (!text)
        return 0;
    return static_cast<int32_t>(std::strspn(text, " "));
}

char *mfs_utility_despace_string(const char *text) {
    if (!text)
        return nullptr;
    return MWCore::copied(withoutBackSpaces(withoutFrontSpaces(text)), "mfs_utility_despace_string")
        .release();
}

char *mfs_utility_format_size(int64_t bytes) {
    const SizeUnit *unit = kSizeUnits;
    while (bytes < unit->from)
        ++unit;
    char text[16];
    std::snprintf(text, sizeof text, "%d %s", static_cast<int32_t>(bytes / unit->divisor),
                  unit->text);
    return MWCore::copied(text, "Allocatin space for formatted size").release();
}
