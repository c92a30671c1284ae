// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_array.h"

#include "core/posix/allocation.h"

#include <cerrno>
#include <cstring>
#include <new>

/// `values` has room for `capacity` pointers, of which the first `count` are in use.
struct mfs_array {
    void **values = nullptr;
    int32_t count = 0;
    int32_t capacity = 0;
};

namespace {

/// Doubles the capacity. Returns false and sets `errno` on failure.
bool grow(mfs_array &array) {
    constexpr int32_t kFirstCapacity = 4;
    if (array.capacity > INT32_MAX / 2) {
        errno = EOVERFLOW;
        return false;
    }
    const int32_t capacity = array.capacity ? array.capacity * 2 : kFirstCapacity;
    void *const values =
        std::realloc(array.values, static_cast<std::size_t>(capacity) * sizeof(void *));
    if (!values)
        return false;
    array.values = static_cast<void **>(values);
    array.capacity = capacity;
    return true;
}

} // namespace

mfs_array *mfs_array_new(void) {
    void *const block = MWCore::allocate(sizeof(mfs_array), "mfs_array_new");
    return block ? new (block) mfs_array : nullptr;
}

int mfs_array_append(mfs_array *array, void *value) {
    if (!array || (array->count == array->capacity && !grow(*array)))
        return 0;
    array->values[array->count++] = value;
    return 1;
}

int32_t mfs_array_count(const mfs_array *array) {
    return array ? array->count : 0;
}

void *mfs_array_value_at_index(const mfs_array *array, int32_t index) {
    return index >= 0 && index < mfs_array_count(array) ? array->values[index] : nullptr;
}

void mfs_array_remove_value_at_index(mfs_array *array, int32_t index) {
    if (index < 0 || index >= mfs_array_count(array))
        return;
    --array->count;
    std::memmove(array->values + index, array->values + index + 1,
                 static_cast<std::size_t>(array->count - index) * sizeof(void *));
}

void mfs_array_free(mfs_array *array) {
    if (!array)
        return;
    std::free(array->values);
    std::free(array);
}

int32_t _findIndexInCFArray(const mfs_array *array, const void *value) {
    for (int32_t index = 0; index < mfs_array_count(array); ++index)
        if (array->values[index] == value)
            return index;
    return -1;
}
