// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_FSO_H
#define MFS_FSO_H

#include "mfs_array.h"
#include "mfs_export.h"

#include <stdint.h>

struct stat; // <sys/stat.h>

MFS_BEGIN_DECLS

/// Values of `mfs_fso::location`.
enum { MFS_LOCATION_LOCAL = 1, MFS_LOCATION_REMOTE = 2 };

/// Values of `mfs_fso::type`; the first three are also values of `mfs_fso::target_type`.
enum {
    MFS_TYPE_OTHER = 0, ///< a device, fifo or socket
    MFS_TYPE_DIRECTORY = 1,
    MFS_TYPE_FILE = 2,
    MFS_TYPE_LINK = 3,
    MFS_TARGET_UNKNOWN = 4, ///< `target_type` only: the target is missing or cannot be examined
};

/// Keys of mfs_fso_get_item_for_key(). Any other key gives 0.
enum {
    MFS_KEY_ACCESS_PERMS = 0,
    MFS_KEY_PERMISSIONS = 1,
    MFS_KEY_DATE_MODIFIED = 2,
    MFS_KEY_NAME = 4,
    MFS_KEY_OWNER = 5,
    MFS_KEY_GROUP = 6,
    MFS_KEY_LINKS = 7,
    MFS_KEY_SIZE_TEXT = 8, ///< a new text from mfs_utility_format_size()
    MFS_KEY_SIZE = 9,
    MFS_KEY_COMPLETE_ALIAS_PATH = 11,
    MFS_KEY_ALIAS_LOCATION = 12,
    MFS_KEY_URL = 13, ///< always 0
    MFS_KEY_COMPLETE_PATH = 15,
    MFS_KEY_PARENT_PATH = 16, ///< a text from mfs_parent_of_path()
    MFS_KEY_TARGET_TYPE = 17,
    MFS_KEY_PARENT = 18,
    MFS_KEY_EXTENSION = 19,
};

/// Values of `which` in mfs_fso_get_subitem_at_index(); any value but the second means files.
enum { MFS_FILES = 0, MFS_SUBDIRECTORIES = 1 };

/// What operations on folders return for a record that is not a folder.
enum { MFS_NOT_A_DIRECTORY = -1234 };

/// One file system item and, for a folder, the records of its children.
///
/// Fields marked "owned" are separate allocations that belong to the record; mfs_fso_destroy_tree()
/// frees them. A record of type MFS_TYPE_DIRECTORY has both arrays; any other has neither.
typedef struct mfs_fso {
    int32_t location;          ///< MFS_LOCATION_...
    int32_t type;              ///< MFS_TYPE_...
    int32_t target_type;       ///< for a link: the type of its target; else 0
    char *alias_location;      ///< owned; a link's target, a notice if that has no path, or null
    char *complete_alias_path; ///< owned; `alias_location` made absolute
    char *access_perms;        ///< set by the host; null in a new record
    uint16_t permissions;      ///< permission number (mfs_permissions.h)
    uint16_t mode;             ///< permission and special bits; for a link, those of its target
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
    int32_t iter_in_folders;   ///< iteration: 1 once it has reached the subdirectories
    void *reserved;            ///< null, never used
    char *complete_path;       ///< owned; parent path and name, or null
    char *url;                 ///< set by the host; null in a new record
    mfs_array *files;          ///< owned; children that are not directories, in listing order
    mfs_array *subdirectories; ///< owned; children that are directories, in listing order
    void *object;              ///< the host's object that wraps this record
    int32_t has_object;        ///< 1 once `object` has been set
    int32_t size_high;         ///< the upper 32 bits of the size; `size` has the lower 32
} mfs_fso;

/// @name Creation and release
/// @{

/// Makes a record. Returns null with EINVAL for a null name and with ENOMEM if memory runs out.
///
/// On success the record takes ownership of @p date_modified, @p owner, @p group and
/// @p alias_location; on failure they stay the caller's. @p name_or_path and @p parent_path are
/// copied; the folder of an absolute @p name_or_path takes precedence over @p parent_path. Leading
/// blanks of @p alias_location are removed, and an empty one counts as none; the record then frees
/// the original text.
MFS_EXPORT MFS_MUST_USE mfs_fso *mfs_fso_new(int32_t type, int32_t location, int32_t permissions,
                                             char *date_modified, const char *name_or_path,
                                             char *owner, char *group, int32_t links, int32_t size,
                                             char *alias_location, const char *parent_path);

/// Makes the record of the item at @p path, following links, and for a folder also the records of
/// its children: one level deep, in the system's order. The caller releases the record with
/// mfs_fso_destroy_tree().
///
/// Returns null and sets `errno` if the item cannot be examined (two trace lines), if an entry of
/// the folder cannot be examined, if reading the folder fails midway, or if memory or descriptors
/// run out while items are examined. If an entry vanishes before it is examined, the listing starts
/// over, up to eight times; after that the result is null with EAGAIN.
///
/// A folder that cannot be opened has no children, and `errno` holds the cause. Every other record
/// leaves `errno` unchanged, so set it to 0 before the call to tell such a folder from an empty
/// one. A folder whose path begins with "/dev" deliberately has no children.
MFS_EXPORT MFS_MUST_USE mfs_fso *mfs_fso_get_local_fso(const char *path);

/// Called for each child as soon as its record is in the folder, right after the system examined
/// the item and found @p item (lstat(2)). @p index counts the children from 0. If the listing
/// starts over, @p index does so too, and all earlier child records are gone. Must not throw.
typedef void (*mfs_fso_visitor)(void *context, const mfs_fso *child, const struct stat *item,
                                int32_t index);

/// As mfs_fso_get_local_fso(), and calls @p visitor with @p context for each child.
MFS_EXPORT MFS_MUST_USE mfs_fso *
mfs_fso_get_local_fso_visiting(const char *path, mfs_fso_visitor visitor, void *context);

/// Makes the record of the item at @p path itself: a link is not followed and a folder is not
/// listed. Returns null and sets `errno` if the item cannot be examined (two trace lines) or if
/// memory or descriptors run out. Leaves `errno` unchanged on success.
MFS_EXPORT MFS_MUST_USE mfs_fso *mfs_fso_get_local_item(const char *path);

/// Frees the record alone, without its texts, its arrays and its children. Ignores null.
MFS_EXPORT void mfs_fso_destroy(mfs_fso *record);

/// Releases the record, its owned texts, its arrays and everything below it, and removes it from
/// its parent, which must still exist and is searched for it. `access_perms`, `url` and `object`
/// stay the host's. Ignores null.
MFS_EXPORT void mfs_fso_destroy_tree(mfs_fso *record);

/// @}
/// @name Linking
/// @{

MFS_EXPORT void mfs_fso_set_parent(mfs_fso *child, mfs_fso *parent);
MFS_EXPORT mfs_fso *mfs_fso_parent(const mfs_fso *record);

/// Stores @p object, which stays the host's, and sets `has_object` to 1.
MFS_EXPORT void mfs_fso_object_set(mfs_fso *record, void *object);
MFS_EXPORT void *mfs_fso_object(const mfs_fso *record);
MFS_EXPORT int mfs_fso_has_object(const mfs_fso *record);

/// Appends @p child to the folder's `subdirectories` if it is a directory, else to its `files`, and
/// makes @p folder its parent. Returns 0 on success, MFS_NOT_A_DIRECTORY with a trace line if
/// @p folder is not a directory, and -1 if memory runs out. Nothing changes on failure.
MFS_EXPORT MFS_MUST_USE int32_t mfs_fso_add_subitem(mfs_fso *folder, mfs_fso *child);

/// @}
/// @name Queries (nonzero for true; mfs_fso_isLocal() to mfs_fso_isLink() give 0 for null)
/// @{

MFS_EXPORT int mfs_fso_isLocal(const mfs_fso *record);
MFS_EXPORT int mfs_fso_isRemote(const mfs_fso *record);
MFS_EXPORT int mfs_fso_isDir(const mfs_fso *record);
MFS_EXPORT int mfs_fso_isFile(const mfs_fso *record);
MFS_EXPORT int mfs_fso_isLink(const mfs_fso *record);

/// The number of children that are not directories; 0 if the record is not a directory.
MFS_EXPORT int32_t mfs_fso_file_count(const mfs_fso *record);
/// The number of children that are directories; 0 if the record is not a directory.
MFS_EXPORT int32_t mfs_fso_subdirectory_count(const mfs_fso *record);

/// Child number @p index (0-based) of `subdirectories` if @p which is MFS_SUBDIRECTORIES, else of
/// `files`. Null if @p index is out of range, with a trace line unless @p index is the count.
MFS_EXPORT mfs_fso *mfs_fso_get_subitem_at_index(const mfs_fso *folder, int32_t index,
                                                 int32_t which);

/// A field by its key: an integer widened to 64 bits, or a pointer (text or record) to be cast back
/// through `intptr_t`. The pointers belong to the record, except that the caller frees the texts of
/// MFS_KEY_SIZE_TEXT and MFS_KEY_PARENT_PATH (but not `mfs_path_root`). 0 for an unknown key.
MFS_EXPORT MFS_MUST_USE int64_t mfs_fso_get_item_for_key(const mfs_fso *record, int32_t key);

/// The size in bytes, from `size_high` and `size`: exact in every record of a listing.
MFS_EXPORT int64_t mfs_fso_full_size(const mfs_fso *record);

/// @}
/// @name Iteration over children: files first, then subdirectories
/// @{

/// Starts an iteration. Without it, the first pass returns null once between files and
/// subdirectories.
MFS_EXPORT void mfs_fso_reset(mfs_fso *record);

/// The next child, or null at the end. If the record is not a directory, returns a pointer with the
/// value MFS_NOT_A_DIRECTORY. Every call writes trace lines.
MFS_EXPORT mfs_fso *mfs_fso_next_item(mfs_fso *record);

/// @}

/// Prints the record and, for a folder, its children to standard output.
MFS_EXPORT void mfs_fso_dump(const mfs_fso *record);

MFS_END_DECLS

#endif
