// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_PERMISSIONS_H
#define MFS_PERMISSIONS_H

#include "mfs_export.h"

#include <stdint.h>

MFS_BEGIN_DECLS

/// The permission codec. A *permission number* is the three octal digits written as a decimal
/// integer: 755 means rwxr-xr-x; it is not the octal constant 0755. Invalid input is not reported;
/// each operation says what it yields.

/// Nine permission flags in one 32-bit word. Flag 0 is the least significant bit, which is the
/// reverse of a mode word. Unnamed bits are zero.
typedef struct mfs_perms {
    uint32_t owner_read : 1;     ///< index 0, mode 0400
    uint32_t owner_write : 1;    ///< index 1, mode 0200
    uint32_t owner_execute : 1;  ///< index 2, mode 0100
    uint32_t group_read : 1;     ///< index 3, mode 0040
    uint32_t group_write : 1;    ///< index 4, mode 0020
    uint32_t group_execute : 1;  ///< index 5, mode 0010
    uint32_t others_read : 1;    ///< index 6, mode 0004
    uint32_t others_write : 1;   ///< index 7, mode 0002
    uint32_t others_execute : 1; ///< index 8, mode 0001
    uint32_t : 23;
} mfs_perms;

/// Flips flag @p index (0 to 8). Ignores any other index and null.
MFS_EXPORT void mfs_toggle_permission(int32_t index, mfs_perms *perms);

/// 1 if flag @p index (0 to 8) is set; 0 if it is clear, for any other index, and for null.
MFS_EXPORT int mfs_check_for_permission(int32_t index, const mfs_perms *perms);

/// The permission number of the nine flags; 0 for null.
MFS_EXPORT int32_t mfs_permissions_perms_to_octal(const mfs_perms *perms);

/// The flags of a permission number, to be freed by the caller; null if memory runs out. Digits are
/// read from the left: a single digit is the owner's, two digits are the group's and the others',
/// and digits after the third are ignored. A digit that is not octal sets no flags.
MFS_EXPORT MFS_MUST_USE mfs_perms *mfs_permissions_octal_to_perms(int32_t number);

/// The text of a permission number, "rwxr-xr-x" for 755, in a buffer of ten bytes padded with
/// zeros. Digits are read as above; a digit that is missing or not octal yields no characters at
/// all ("rwx" for 7, "---r--" for 48).
MFS_EXPORT MFS_MUST_USE char *mfs_permissions_octal_to_string(int32_t number);

/// The nine permission bits of a mode word for a permission number: 0755 for 755.
MFS_EXPORT uint16_t mfs_permissions_octal_to_mode(int32_t number);

/// The permission number of the permission column of a long listing, "-rwxr-xr-x" or longer; -1 for
/// fewer than ten characters and for null. Each triple counts the letters r, w and x in any order;
/// s, S, t and T do not count.
MFS_EXPORT MFS_MUST_USE int32_t mfs_permissions_string_to_octal(const char *text);

/// The permission number of the nine permission bits of a mode word (POSIX sys/stat.h).
MFS_EXPORT int32_t mfs_get_perms_from_mode(uint32_t mode);

/// As mfs_get_perms_from_mode(). Also writes 1 or 0 for the sticky (01000), set-group-id (02000)
/// and set-user-id (04000) bits to those pointers that are not null.
MFS_EXPORT int32_t modetToPerms(uint32_t mode, unsigned char *sticky_out, unsigned char *setgid_out,
                                unsigned char *setuid_out);

MFS_END_DECLS

#endif
