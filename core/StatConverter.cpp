// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/StatConverter.h"

#include "core/LinkTargets.h"
#include "core/mfs_permissions.h"
#include "core/posix/errors.h"
#include "core/posix/stat_fields.h"
#include "core/record_type.h"
#include "core/text_views.h"
#include "core/trace.h"

namespace MWCore {
namespace {

constexpr std::string_view kBrokenLink = "Link is broken. Use the finder to fix";

/// The permission and special bits, for a link those of its target; 0 for a broken link.
uint16_t followedMode(const struct stat &item, const struct stat *target) {
    const struct stat *const followed = S_ISLNK(item.st_mode) ? target : &item;
    return static_cast<uint16_t>(followed ? followed->st_mode & kPermissionBits : 0);
}

/// The type of a link's target, which is never a link.
int32_t targetTypeOf(const struct stat &target) {
    const int32_t type = recordTypeOf(target.st_mode);
    return type == MFS_TYPE_LINK ? static_cast<int32_t>(MFS_TYPE_OTHER) : type;
}

} // namespace

RecordTree StatConverter::convert(const struct stat &item, const struct stat *target,
                                  ItemPaths paths) {
    RecordDraft draft;
    draft.type = recordTypeOf(item.st_mode);
    draft.permissions = mfs_get_perms_from_mode(item.st_mode);
    draft.mode = followedMode(item, target);
    draft.links = static_cast<int32_t>(item.st_nlink);
    draft.size = item.st_size;
    draft.modificationTime = item.st_mtime;
    draft.nameOrPath = paths.name;
    draft.parentPath = paths.parentPath;
    if (!addTexts(item, draft))
        return nullptr;
    if (draft.type == MFS_TYPE_LINK && !target)
        draft.targetType = MFS_TARGET_UNKNOWN;
    if (draft.type == MFS_TYPE_LINK && target) {
        draft.targetType = targetTypeOf(*target);
        draft.aliasLocation =
            paths.linkTarget ? std::move(paths.linkTarget) : copied(kBrokenLink, "alias location");
        if (!draft.aliasLocation)
            return nullptr;
    }
    return RecordTree(makeRecord(draft));
}

/// Returns false at the first failure, before another call can change `errno`.
bool StatConverter::addTexts(const struct stat &item, RecordDraft &draft) {
    draft.dateModified = dates_.textFor(item.st_mtime);
    if (!draft.dateModified)
        return false;
    draft.owner = accounts_.user(item.st_uid);
    if (!draft.owner)
        return false;
    draft.group = accounts_.group(item.st_gid);
    return draft.group != nullptr;
}

RecordTree _stat_to_fso(const struct stat *stat, const struct stat *target_stat, const char *path,
                        StatConverter &converter) {
    if (!stat) {
        trace("stats were null for path : %s\n", path);
        return nullptr;
    }
    Text linkTarget;
    if (S_ISLNK(stat->st_mode) && target_stat) {
        linkTarget = resolvedPath(path);
        if (!linkTarget && isExhaustion(errno))
            return nullptr;
    }
    return converter.convert(*stat, target_stat,
                             {containingFolder(path), lastComponent(path), std::move(linkTarget)});
}

} // namespace MWCore
