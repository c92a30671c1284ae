// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/ResourceMap.h"
#include "tests/platform/samples.h"

#include <gtest/gtest.h>

namespace {

using MWCore::ResourceMap;
using samples::kIcns;
using samples::kText;

TEST(ResourceMap, ReadsAndWritesTheRealLayout) {
    auto map = ResourceMap::parse(samples::resourceFork());
    ASSERT_TRUE(map);
    ASSERT_EQ(map->resources().size(), 2U);
    EXPECT_EQ(map->find(kIcns, -16455)->data, "abc");
    EXPECT_EQ(map->find(kIcns, -16455)->name, std::nullopt);
    EXPECT_EQ(map->find(kText, 128)->data, "hello");
    EXPECT_EQ(map->find(kText, 128)->name, "title");
    EXPECT_EQ(map->find(kText, 128)->attributes, 0x20);
    EXPECT_EQ(map->find(kText, 129), nullptr);
    QByteArray withHeaderInMap = samples::resourceFork();
    withHeaderInMap.replace(256 + 16, 16, withHeaderInMap.first(16));
    EXPECT_EQ(map->toBytes(), withHeaderInMap) << "everything unchanged is written as it was";
}

TEST(ResourceMap, ResourcesAreAddedReplacedAndRemoved) {
    ResourceMap map;
    map.put({kIcns, 1, std::nullopt, 0, "one"});
    map.put({kText, 2, QByteArray(300, 'n'), 0, ""});
    map.put({kIcns, -3, "", 4, "three"});
    map.put({kIcns, 1, std::nullopt, 0, "another one"});
    ASSERT_TRUE(map.remove(kText, 2));
    EXPECT_FALSE(map.remove(kText, 2));
    map.put({kText, 2, QByteArray(300, 'n'), 0, ""});
    const auto again = ResourceMap::parse(*map.toBytes());
    ASSERT_TRUE(again);
    ASSERT_EQ(again->resources().size(), 3U);
    EXPECT_EQ(again->find(kIcns, 1)->data, "another one");
    EXPECT_EQ(again->find(kIcns, -3)->data, "three");
    EXPECT_EQ(again->find(kIcns, -3)->name, "");
    EXPECT_EQ(again->find(kText, 2)->name, QByteArray(255, 'n'));
    const auto empty = ResourceMap::parse(*ResourceMap().toBytes());
    EXPECT_TRUE(empty && empty->resources().empty());
}

TEST(ResourceMap, ForksTooLargeForTheFormatAreRefused) {
    ResourceMap large;
    large.put({kIcns, 1, std::nullopt, 0, QByteArray(1 << 24, 'x')});
    EXPECT_TRUE(large.toBytes()) << "the last one may be of any length";
    large.put({kIcns, 2, std::nullopt, 0, "y"});
    EXPECT_FALSE(large.toBytes());
    ResourceMap many;
    for (int16_t id = 0; id < 6000; ++id)
        many.put({kIcns, id, std::nullopt, 0, ""});
    EXPECT_FALSE(many.toBytes());
}

TEST(ResourceMap, DamagedForksAreRefused) {
    const QByteArray good = samples::resourceFork();
    constexpr qsizetype kMap = 256 + 16;
    const struct {
        const char *what;
        qsizetype at;
        const char *bytes;
    } rows[] = {
        {"data beyond the end", 0, "7fffffff"},
        {"the map beyond the end", 4, "ffffffff"},
        {"a map of length 0", 12, "00000000"},
        {"the type list beyond the map", kMap + 24, "ffff"},
        {"more types than there are", kMap + 28, "fffe"},
        {"references beyond the map", kMap + 36, "fff0"},
        {"more references than fit", kMap + 34, "0fff"},
        {"a name beyond the map", kMap + 60, "7fff"},
        {"a resource beyond the data", kMap + 51, "0000ff"},
        {"a resource longer than the data", 256, "00ffffff"},
        {"a resource that overlaps the next one", 256, "00000008"},
    };
    ASSERT_TRUE(ResourceMap::parse(good));
    for (const auto &row : rows) {
        const QByteArray bytes = samples::hex(row.bytes);
        QByteArray bad = good;
        bad.replace(row.at, bytes.size(), bytes);
        EXPECT_FALSE(ResourceMap::parse(bad)) << row.what;
    }
    for (qsizetype length = 1; length < good.size(); ++length)
        EXPECT_FALSE(ResourceMap::parse(good.first(length))) << "cut at " << length;
}

} // namespace
