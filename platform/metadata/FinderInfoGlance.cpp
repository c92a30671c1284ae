// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/FinderInfoGlance.h"

#include "platform/metadata/conventions.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <sys/xattr.h>

namespace MWCore {
namespace {

/// The attribute's value; all zero if it is not 32 bytes long.
FinderInfo plainInfo(const QByteArray &path, const char *name) {
    std::array<char, FinderInfo::kLength> value{};
    const ssize_t length = lgetxattr(path.constData(), name, value.data(), value.size());
    return length == FinderInfo::kLength ? FinderInfo::fromBytes({value.data(), length})
                                         : FinderInfo();
}

} // namespace

FinderInfoGlance glanceAtFinderInfo(const QByteArray &path) {
    char names[1024]; // a longer list is not searched
    const ssize_t length = llistxattr(path.constData(), names, sizeof names);
    if (length <= 0)
        return {{}, length == 0 || errno != ERANGE};
    const auto plain = conventions().begin();
    FinderInfoGlance glance;
    for (const char *name = names; name < names + length; name += std::strlen(name) + 1)
        for (auto convention = plain; convention != conventions().end(); ++convention) {
            if (std::strcmp(name, convention->attribute) != 0)
                continue;
            if (convention == plain)
                glance.info = plainInfo(path, name);
            else
                glance.isWhole = false;
        }
    return glance;
}

bool readFinderInfoWithin(TimeAllowance &allowance, const QByteArray &path, FinderInfo *info,
                          Sidecars sidecars) {
    const FinderInfoGlance glance = glanceAtFinderInfo(path);
    *info = glance.info;
    if (glance.isWhole && sidecars == Sidecars::Absent)
        return true;
    const TimeAllowance::Use use(allowance);
    if (use.isGranted() && readFinderInfo(path, info, sidecars) != noErr)
        *info = {};
    return use.isGranted();
}

} // namespace MWCore
