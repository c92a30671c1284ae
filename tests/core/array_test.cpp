// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_array.h"

#include <gtest/gtest.h>

namespace {

TEST(Array, KeepsPointersInOrder) {
    int values[1000];
    mfs_array *const array = mfs_array_new();
    for (int &value : values)
        ASSERT_EQ(mfs_array_append(array, &value), 1);
    ASSERT_EQ(mfs_array_append(array, &values[7]), 1);
    EXPECT_EQ(mfs_array_count(array), 1001);
    EXPECT_EQ(mfs_array_value_at_index(array, 999), &values[999]);
    EXPECT_EQ(_findIndexInCFArray(array, &values[7]), 7) << "the first of two";
    EXPECT_EQ(_findIndexInCFArray(array, array), -1);

    mfs_array_remove_value_at_index(array, 0);
    mfs_array_remove_value_at_index(array, 999);
    EXPECT_EQ(mfs_array_count(array), 999);
    EXPECT_EQ(mfs_array_value_at_index(array, 998), &values[999]);
    for (const int32_t outside : {-1, 999, INT32_MAX}) {
        mfs_array_remove_value_at_index(array, outside);
        EXPECT_EQ(mfs_array_value_at_index(array, outside), nullptr);
    }
    EXPECT_EQ(mfs_array_count(array), 999);
    mfs_array_free(array);
}

} // namespace
