// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_ARRAY_H
#define MFS_ARRAY_H

#include "mfs_export.h"

#include <stdint.h>

MFS_BEGIN_DECLS

/// A growing list of bare pointers. It owns its own storage and never what the pointers lead to.
typedef struct mfs_array mfs_array;

/// A new empty array, released with mfs_array_free(); null when memory runs out.
MFS_EXPORT MFS_MUST_USE mfs_array *mfs_array_new(void);

/// Appends @p value. Returns 1, or 0 when @p array is null, memory runs out or the array would pass
/// 2^30 values (EOVERFLOW); the array is then unchanged.
MFS_EXPORT MFS_MUST_USE int mfs_array_append(mfs_array *array, void *value);

/// The number of values; 0 for a null array.
MFS_EXPORT int32_t mfs_array_count(const mfs_array *array);

/// The value at @p index (0-based); null outside the array or for a null array.
MFS_EXPORT void *mfs_array_value_at_index(const mfs_array *array, int32_t index);

/// Takes the value at @p index out; the ones behind it move up. Outside the array nothing happens.
MFS_EXPORT void mfs_array_remove_value_at_index(mfs_array *array, int32_t index);

/// Releases the array, not what its values lead to. Null is ignored.
MFS_EXPORT void mfs_array_free(mfs_array *array);

/// The index of the first value that is the same pointer as @p value, or -1.
MFS_EXPORT int32_t _findIndexInCFArray(const mfs_array *array, const void *value);

MFS_END_DECLS

#endif
