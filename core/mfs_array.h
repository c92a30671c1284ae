// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_ARRAY_H
#define MFS_ARRAY_H

#include "mfs_export.h"

#include <stdint.h>

MFS_BEGIN_DECLS

/// A growing list of pointers. It owns its storage, but not what the pointers point to.
typedef struct mfs_array mfs_array;

/// A new empty array, to be released with mfs_array_free(); null if memory runs out.
MFS_EXPORT MFS_MUST_USE mfs_array *mfs_array_new(void);

/// Appends @p value and returns 1. Returns 0 and leaves the array unchanged if @p array is null, if
/// memory runs out, or if the array would exceed 2^30 values (EOVERFLOW).
MFS_EXPORT MFS_MUST_USE int mfs_array_append(mfs_array *array, void *value);

/// The number of values; 0 for a null array.
MFS_EXPORT int32_t mfs_array_count(const mfs_array *array);

/// The value at @p index (0-based); null if @p index is out of range or @p array is null.
MFS_EXPORT void *mfs_array_value_at_index(const mfs_array *array, int32_t index);

/// Removes the value at @p index and closes the gap. Ignores an index out of range and a null
/// array.
MFS_EXPORT void mfs_array_remove_value_at_index(mfs_array *array, int32_t index);

/// Releases the array, but not what its values point to. Ignores null.
MFS_EXPORT void mfs_array_free(mfs_array *array);

/// The index of the first pointer equal to @p value, or -1.
MFS_EXPORT int32_t _findIndexInCFArray(const mfs_array *array, const void *value);

MFS_END_DECLS

#endif
