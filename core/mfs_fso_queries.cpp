// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_fso.h"
#include "core/mfs_path.h"
#include "core/mfs_utility.h"
#include "core/trace.h"

using MWCore::trace;

namespace {

constexpr const char *kNotADirectory = "Dumb ass programmer detected\n";

int64_t asValue(const void *pointer) {
    return static_cast<int64_t>(reinterpret_cast<intptr_t>(pointer));
}

} // namespace

void mfs_fso_set_parent(mfs_fso *child, mfs_fso *parent) {
    child->parent = parent;
}

mfs_fso *mfs_fso_parent(const mfs_fso *record) {
    return record->parent;
}

void mfs_fso_object_set(mfs_fso *record, void *object) {
    record->object = object;
    record->has_object = 1;
}

void *mfs_fso_object(const mfs_fso *record) {
    return record->object;
}

int mfs_fso_has_object(const mfs_fso *record) {
    return record->has_object != 0;
}

int32_t mfs_fso_add_subitem(mfs_fso *folder, mfs_fso *child) {
    if (!mfs_fso_isDir(folder)) {
        trace(kNotADirectory);
        return MFS_NOT_A_DIRECTORY;
    }
    if (!mfs_array_append(mfs_fso_isDir(child) ? folder->subdirectories : folder->files, child))
        return -1;
    mfs_fso_set_parent(child, folder);
    return 0;
}

int mfs_fso_isLocal(const mfs_fso *record) {
    return record && record->location == MFS_LOCATION_LOCAL;
}

int mfs_fso_isRemote(const mfs_fso *record) {
    return record && record->location == MFS_LOCATION_REMOTE;
}

int mfs_fso_isDir(const mfs_fso *record) {
    return record && record->type == MFS_TYPE_DIRECTORY;
}

int mfs_fso_isFile(const mfs_fso *record) {
    return record && record->type == MFS_TYPE_FILE;
}

int mfs_fso_isLink(const mfs_fso *record) {
    return record && record->type == MFS_TYPE_LINK;
}

int32_t mfs_fso_file_count(const mfs_fso *record) {
    return mfs_array_count(record->files);
}

int32_t mfs_fso_subdirectory_count(const mfs_fso *record) {
    return mfs_array_count(record->subdirectories);
}

mfs_fso *mfs_fso_get_subitem_at_index(const mfs_fso *folder, int32_t index, int32_t which) {
    const mfs_array *const children =
        which == MFS_SUBDIRECTORIES ? folder->subdirectories : folder->files;
    if (index < 0 || index > mfs_array_count(children)) {
        trace("Index out of range\n");
        return nullptr;
    }
    return static_cast<mfs_fso *>(mfs_array_value_at_index(children, index));
}

int64_t mfs_fso_get_item_for_key(const mfs_fso *record, int32_t key) {
    switch (key) {
    case MFS_KEY_ACCESS_PERMS:
        return asValue(record->access_perms);
    case MFS_KEY_PERMISSIONS:
        return record->permissions;
    case MFS_KEY_DATE_MODIFIED:
        return asValue(record->date_modified);
    case MFS_KEY_NAME:
        return asValue(record->name);
    case MFS_KEY_OWNER:
        return asValue(record->owner);
    case MFS_KEY_GROUP:
        return asValue(record->group);
    case MFS_KEY_LINKS:
        return record->links;
    case MFS_KEY_SIZE_TEXT:
        return asValue(mfs_utility_format_size(record->size));
    case MFS_KEY_SIZE:
        return record->size;
    case MFS_KEY_COMPLETE_ALIAS_PATH:
        return asValue(record->complete_alias_path);
    case MFS_KEY_ALIAS_LOCATION:
        return asValue(record->alias_location);
    case MFS_KEY_COMPLETE_PATH:
        return asValue(record->complete_path);
    case MFS_KEY_PARENT_PATH:
        return asValue(mfs_parent_of_path(record->complete_path));
    case MFS_KEY_TARGET_TYPE:
        return record->target_type;
    case MFS_KEY_PARENT:
        return asValue(record->parent);
    case MFS_KEY_EXTENSION:
        return asValue(record->extension);
    default: // includes MFS_KEY_URL, which always gives 0
        return 0;
    }
}

int64_t mfs_fso_full_size(const mfs_fso *record) {
    return static_cast<int64_t>(record->size_high) * (INT64_C(1) << 32) +
           static_cast<uint32_t>(record->size);
}

void mfs_fso_reset(mfs_fso *record) {
    record->iter_index = 1;
    record->iter_array_index = 0;
    record->iter_in_folders = 0;
}

mfs_fso *mfs_fso_next_item(mfs_fso *record) {
    trace("Entering mfs_fso_next_item\n");
    if (!mfs_fso_isDir(record)) {
        trace(kNotADirectory);
        return reinterpret_cast<mfs_fso *>(static_cast<intptr_t>(MFS_NOT_A_DIRECTORY));
    }
    const int32_t files = mfs_fso_file_count(record);
    const int32_t total = files + mfs_fso_subdirectory_count(record);
    trace("Total Items : %d\n", total);
    if (total == 0) {
        trace("There are no items in this directory\n");
        return nullptr;
    }

    mfs_fso *item = nullptr;
    if (record->iter_index <= total) {
        const bool inFolders = record->iter_index > files;
        trace(inFolders ? "Getting a dir\n" : "Getting a file\n");
        if (inFolders && !record->iter_in_folders) {
            trace("Correcting Index\n");
            record->iter_array_index = 0;
            record->iter_in_folders = 1;
        }
        item = mfs_fso_get_subitem_at_index(record, record->iter_array_index,
                                            inFolders ? MFS_SUBDIRECTORIES : MFS_FILES);
        trace("Current Index is %d\n", record->iter_index);
        trace("Actual Array index is %d\n", record->iter_array_index);
        ++record->iter_index;
        ++record->iter_array_index;
    }
    trace("Leaving mfs_fso_next_item\n");
    return item;
}
