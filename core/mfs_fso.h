// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_FSO_H
#define MFS_FSO_H

#include "mfs_array.h"
#include "mfs_export.h"

#include <stdint.h>

MFS_BEGIN_DECLS

/// Values of `mfs_fso::location`.
enum { MFS_LOCATION_LOCAL = 1, MFS_LOCATION_REMOTE = 2 };

/// Values of `mfs_fso::type`; the first three are also values of `mfs_fso::target_type`.
enum {
    MFS_TYPE_OTHER = 0, ///< a device, fifo or socket
    MFS_TYPE_DIRECTORY = 1,
    MFS_TYPE_FILE = 2,
    MFS_TYPE_LINK = 3,
    MFS_TARGET_UNKNOWN = 4, ///< `target_type` alone: the target is missing or may not be examined
};

/// Keys of mfs_fso_get_item_for_key(). The keys that are left out give 0.
enum {
    MFS_KEY_ACCESS_PERMS = 0,
    MFS_KEY_PERMISSIONS = 1,
    MFS_KEY_DATE_MODIFIED = 2,
    MFS_KEY_NAME = 4,
    MFS_KEY_OWNER = 5,
    MFS_KEY_GROUP = 6,
    MFS_KEY_LINKS = 7,
    MFS_KEY_SIZE_TEXT = 8, ///< a fresh text of mfs_utility_format_size()
    MFS_KEY_SIZE = 9,
    MFS_KEY_COMPLETE_ALIAS_PATH = 11,
    MFS_KEY_ALIAS_LOCATION = 12,
    MFS_KEY_URL = 13, ///< always 0
    MFS_KEY_COMPLETE_PATH = 15,
    MFS_KEY_PARENT_PATH = 16, ///< a text of mfs_parent_of_path()
    MFS_KEY_TARGET_TYPE = 17,
    MFS_KEY_PARENT = 18,
    MFS_KEY_EXTENSION = 19,
};

/// Values of `which` in mfs_fso_get_subitem_at_index(); any but the second means files.
enum { MFS_FILES = 0, MFS_SUBDIRECTORIES = 1 };

/// What operations on a folder answer for a record that is none.
enum { MFS_NOT_A_DIRECTORY = -1234 };

/// One item of a file system and, for a folder, the records of its children.
///
/// Texts marked "owned" are separate allocations that belong to the record; mfs_fso_destroy_tree()
/// frees them. A record of type MFS_TYPE_DIRECTORY has both arrays, any other has neither.
typedef struct mfs_fso {
    int32_t location;          ///< MFS_LOCATION_...
    int32_t type;              ///< MFS_TYPE_...
    int32_t target_type;       ///< of a link: what it leads to; else 0
    char *alias_location;      ///< owned; of a link: the resolved target, or that it is broken
    char *complete_alias_path; ///< owned; `alias_location` made absolute
    char *access_perms;        ///< the host's; null in every record made here
    uint16_t permissions;      ///< permission number (mfs_permissions.h)
    uint16_t mode;             ///< permission and special bits; of a link, of what it leads to
    char *date_modified;       ///< owned; mfs_date_string_from_time_t() of `mod_time`
    char *extension;           ///< owned; without its dot, or null
    int64_t mod_time;          ///< seconds since 1970-01-01 UTC
    char *name;                ///< owned; the last path component
    char *owner;               ///< owned; user name or "Unknown"
    char *group;               ///< owned; group name or "Unknown"
    int32_t links;             ///< hard links
    int32_t size;              ///< bytes, narrowed to 32 bits: see mfs_fso_full_size()
    struct mfs_fso *parent;    ///< the folder whose array holds this record, or null
    int32_t iter_index;        ///< iteration: position among all children, from 1
    int32_t iter_array_index;  ///< iteration: position in the current array, from 0
    int32_t iter_in_folders;   ///< iteration: 1 once it has come to the subdirectories
    void *reserved;            ///< null, never used
    char *complete_path;       ///< owned; parent path and name, or null
    char *url;                 ///< the host's; null in every record made here
    mfs_array *files;          ///< owned; children that are not directories, in listing order
    mfs_array *subdirectories; ///< owned; children that are directories, in listing order
    void *object;              ///< the host's object around this record
    int32_t has_object;        ///< 1 once `object` was set
    int32_t size_high;         ///< the upper half of the size, of which `size` is the lower
} mfs_fso;

/// @name Creation and release
/// @{

/// A new record, or null (EINVAL for a null name, ENOMEM).
///
/// @p date_modified, @p owner, @p group and @p alias_location are adopted: on success they belong
/// to the record, on failure still to the caller. @p name_or_path and @p parent_path are copied;
/// with an absolute @p name_or_path the record takes its folder from there. An @p alias_location
/// loses its leading blanks, and the empty one counts as none (both are freed then).
MFS_EXPORT MFS_MUST_USE mfs_fso *mfs_fso_new(int32_t type, int32_t location, int32_t permissions,
                                             char *date_modified, const char *name_or_path,
                                             char *owner, char *group, int32_t links, int32_t size,
                                             char *alias_location, const char *parent_path);

/// The record of the item at @p path, links followed, and for a folder the records of what is in
/// it, one level deep and in the order of the system. The caller releases it with
/// mfs_fso_destroy_tree().
///
/// Null, with the cause in `errno`: the item cannot be examined (two trace lines), an entry of the
/// folder cannot be, reading the folder fails in the middle, or memory or descriptors run out while
/// items are examined. When an entry has vanished before it was examined the listing is begun
/// again, up to eight times; then it is null with EAGAIN.
///
/// A folder that cannot be opened comes without children and with the cause in `errno`, which is
/// otherwise left alone: set it to 0 before the call to tell such a folder from an empty one. A
/// folder whose path begins with "/dev" deliberately comes without children.
MFS_EXPORT MFS_MUST_USE mfs_fso *mfs_fso_get_local_fso(const char *path);

/// Hears of each child as soon as its record stands in the folder, when the system has just looked
/// at the item. @p index counts the children from 0 on; it is 0 again when the listing is begun
/// again, and all records that came before are gone. Must not throw.
typedef void (*mfs_fso_visitor)(void *context, const mfs_fso *child, int32_t index);

/// As mfs_fso_get_local_fso(), and calls @p visitor with @p context for each child.
MFS_EXPORT MFS_MUST_USE mfs_fso *
mfs_fso_get_local_fso_visiting(const char *path, mfs_fso_visitor visitor, void *context);

/// The record of the item at @p path itself: a link is not followed and a folder not listed. Null,
/// with the cause in `errno`, when it cannot be examined (two trace lines) or memory or descriptors
/// run out. On success `errno` is left alone.
MFS_EXPORT MFS_MUST_USE mfs_fso *mfs_fso_get_local_item(const char *path);

/// Frees the record's own block: not its texts, not its arrays, not its children. Null is ignored.
MFS_EXPORT void mfs_fso_destroy(mfs_fso *record);

/// Releases the record, its owned texts, its arrays and everything below it, and takes it out of
/// its parent, which must still be there and is searched for it. `access_perms`, `url` and `object`
/// are the host's. Null is ignored.
MFS_EXPORT void mfs_fso_destroy_tree(mfs_fso *record);

/// @}
/// @name Linking
/// @{

MFS_EXPORT void mfs_fso_set_parent(mfs_fso *child, mfs_fso *parent);
MFS_EXPORT mfs_fso *mfs_fso_parent(const mfs_fso *record);

/// Stores the host's @p object, which is not owned, and sets `has_object` to 1.
MFS_EXPORT void mfs_fso_object_set(mfs_fso *record, void *object);
MFS_EXPORT void *mfs_fso_object(const mfs_fso *record);
MFS_EXPORT int mfs_fso_has_object(const mfs_fso *record);

/// Appends @p child to the folder's `subdirectories` when it is a directory, else to its `files`,
/// and becomes its parent. Returns 0; MFS_NOT_A_DIRECTORY with a trace line when @p folder is none;
/// -1 when memory runs out. Nothing changes unless it returns 0.
MFS_EXPORT MFS_MUST_USE int32_t mfs_fso_add_subitem(mfs_fso *folder, mfs_fso *child);

/// @}
/// @name Queries (nonzero for true; the five about the kind are 0 for null)
/// @{

MFS_EXPORT int mfs_fso_isLocal(const mfs_fso *record);
MFS_EXPORT int mfs_fso_isRemote(const mfs_fso *record);
MFS_EXPORT int mfs_fso_isDir(const mfs_fso *record);
MFS_EXPORT int mfs_fso_isFile(const mfs_fso *record);
MFS_EXPORT int mfs_fso_isLink(const mfs_fso *record);

/// The number of children that are not directories; 0 for a record that is no directory.
MFS_EXPORT int32_t mfs_fso_file_count(const mfs_fso *record);
/// The number of children that are directories; 0 for a record that is no directory.
MFS_EXPORT int32_t mfs_fso_subdirectory_count(const mfs_fso *record);

/// Child number @p index (0-based) of `subdirectories` when @p which is MFS_SUBDIRECTORIES, else of
/// `files`. Null with a trace line outside 0 to count; null without one when @p index is the count.
MFS_EXPORT mfs_fso *mfs_fso_get_subitem_at_index(const mfs_fso *folder, int32_t index,
                                                 int32_t which);

/// Any field by its key: a sign-extended integer or a pointer (texts, records), to be read back
/// through `intptr_t`. What a key returns
/// belongs to the record except the texts of MFS_KEY_SIZE_TEXT and MFS_KEY_PARENT_PATH, which the
/// caller frees (not `mfs_path_root`). 0 for an unknown key.
MFS_EXPORT MFS_MUST_USE int64_t mfs_fso_get_item_for_key(const mfs_fso *record, int32_t key);

/// The size in bytes, not narrowed: `size_high` and `size` together, which are whole in every
/// record of a listing.
MFS_EXPORT int64_t mfs_fso_full_size(const mfs_fso *record);

/// @}
/// @name Iteration over children: files first, then subdirectories
/// @{

/// Starts an iteration. Without it the first round comes to null once between the two arrays.
MFS_EXPORT void mfs_fso_reset(mfs_fso *record);

/// The next child, null at the end, or the pointer of value MFS_NOT_A_DIRECTORY for a record that
/// is none. Writes trace lines at every call.
MFS_EXPORT mfs_fso *mfs_fso_next_item(mfs_fso *record);

/// @}

/// Prints the record, and for a folder its children, to standard output.
MFS_EXPORT void mfs_fso_dump(const mfs_fso *record);

MFS_END_DECLS

#endif
