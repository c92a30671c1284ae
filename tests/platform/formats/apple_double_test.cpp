// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/AppleDouble.h"
#include "tests/platform/samples.h"

#include <gtest/gtest.h>

namespace {

using MWCore::AppleDouble;
using MWCore::kFinderInfoEntry;
using MWCore::kResourceForkEntry;
using samples::number16;
using samples::number32;

QByteArray header(uint16_t count) {
    return samples::hex("0005160700020000") + samples::zeros(16) + number16(count);
}

QByteArray entry(uint32_t id, uint32_t offset, uint32_t length) {
    return number32(id) + number32(offset) + number32(length);
}

/// A file with @p count comment entries without content.
QByteArray tableOf(uint16_t count) {
    return header(count) + entry(4, 0, 0).repeated(count);
}

TEST(AppleDouble, DamagedFilesAreRefused) {
    const struct {
        const char *what;
        QByteArray bytes;
    } rows[] = {
        {"empty", ""},
        {"a header cut short", header(1).left(25)},
        {"another magic", samples::zeros(26)},
        {"no table", header(3)},
        {"a huge count", header(0xFFFF) + samples::zeros(0xFFFF * 12)},
        {"content beyond the end", header(1) + entry(9, 38, 33) + samples::zeros(32)},
        {"an offset near the largest number", header(1) + entry(9, 0xFFFFFFF0, 0x20)},
        {"content in the header", header(1) + entry(9, 0, 32) + samples::zeros(32)},
        {"content in the table", header(1) + entry(9, 26, 32) + samples::zeros(32)},
        {"too many entries", tableOf(65)},
        {"no room for the entries that we add", tableOf(63)},
        {"overlapping contents",
         header(2) + entry(9, 50, 32) + entry(2, 60, 32) + samples::zeros(64)},
    };
    for (const auto &row : rows)
        EXPECT_FALSE(AppleDouble::parse(row.bytes)) << row.what;
    EXPECT_TRUE(AppleDouble::parse(header(0)));
    EXPECT_TRUE(AppleDouble::parse(tableOf(62)));
    EXPECT_TRUE(AppleDouble::entriesOf(tableOf(64), 1024));
    EXPECT_TRUE(AppleDouble::parse(header(1) + entry(2, 0xFFFF, 0)))
        << "an empty content can have any offset";
}

TEST(AppleDouble, OnlyTheRequestedBytesChange) {
    const QByteArray before = samples::sidecar(0x000C);
    auto file = AppleDouble::parse(before);
    ASSERT_TRUE(file);
    file->overwrite(kFinderInfoEntry, samples::finderInfo(0x0002));
    EXPECT_EQ(file->bytes(), samples::sidecar(0x0002));
    file->replace(kResourceForkEntry, "a longer fork" + samples::resourceFork());
    EXPECT_EQ(file->content(kResourceForkEntry), "a longer fork" + samples::resourceFork());
    file->replace(kResourceForkEntry, samples::resourceFork());
    EXPECT_EQ(file->bytes(), samples::sidecar(0x0002)) << "and back";
}

TEST(AppleDouble, AGrowingContentLeavesItsNeighboursAlone) {
    const QByteArray before =
        header(3) + entry(2, 62, 4) + entry(4, 66, 7) + entry(3, 73, 4) + "forkcommentname";
    auto file = AppleDouble::parse(before);
    ASSERT_TRUE(file);
    for (const char *const fork : {"longer fork", "fo", "", "fork again, and longer"}) {
        file->replace(kResourceForkEntry, fork);
        const auto again = AppleDouble::parse(file->bytes());
        ASSERT_TRUE(again) << fork;
        EXPECT_EQ(again->content(kResourceForkEntry), fork);
        EXPECT_EQ(again->content(4), "comment");
        EXPECT_EQ(again->content(3), "name");
    }
}

TEST(AppleDouble, AnEntryIsAddedWhereTheTableHasNoRoom) {
    const QByteArray info =
        samples::finderInfo(0x0004) + samples::zeros(2) + samples::attributeBlock(72, "a value");
    auto file =
        AppleDouble::parse(header(1) + entry(9, 38, static_cast<uint32_t>(info.size())) + info);
    ASSERT_TRUE(file);
    file->replace(kResourceForkEntry, "fork");
    const auto again = AppleDouble::parse(file->bytes());
    ASSERT_TRUE(again);
    EXPECT_EQ(again->content(kResourceForkEntry), "fork");
    EXPECT_EQ(again->content(kFinderInfoEntry), samples::finderInfo(0x0004) + samples::zeros(2) +
                                                    samples::attributeBlock(72 + 12, "a value"))
        << "the attributes' offsets are adjusted";
}

TEST(AppleDouble, AnAddedEntryOverwritesNothing) {
    const QByteArray unnamed = "bytes that nobody names";
    const auto place = static_cast<uint32_t>(38 + unnamed.size());
    auto file = AppleDouble::parse(header(1) + entry(4, place, 4) + unnamed + "note at the end");
    ASSERT_TRUE(file);
    file->overwrite(kFinderInfoEntry, samples::finderInfo(0x0004));
    EXPECT_EQ(file->content(4), "note");
    EXPECT_EQ(file->bytes().mid(50, unnamed.size() + 15), unnamed + "note at the end");
}

TEST(AppleDouble, AHostileAttributeBlockChangesNothingElse) {
    QByteArray info =
        samples::finderInfo(0) + samples::zeros(2) + "ATTR" + samples::zeros(30) + number16(0xFFFF);
    const auto length = static_cast<uint32_t>(info.size());
    auto file = AppleDouble::parse(header(2) + entry(9, 50, length) + entry(4, 50 + length, 40) +
                                   info + QByteArray(40, 'x'));
    ASSERT_TRUE(file);
    file->replace(kResourceForkEntry, "fork");
    EXPECT_EQ(file->content(4), QByteArray(40, 'x'));
}

TEST(AppleDouble, KnowsWhenItStoresNothing) {
    EXPECT_TRUE(AppleDouble::fresh().isEmpty());
    const auto isEmpty = [](const QByteArray &bytes) {
        return AppleDouble::parse(bytes)->isEmpty();
    };
    EXPECT_TRUE(isEmpty(header(1) + entry(8, 38, 4) + samples::zeros(4)));
    EXPECT_FALSE(isEmpty(header(1) + entry(4, 38, 4) + "note"));
    EXPECT_FALSE(
        isEmpty(header(2) + entry(4, 50, 4) + entry(4, 54, 4) + samples::zeros(4) + "note"))
        << "a second entry with the same id";
    EXPECT_FALSE(isEmpty(header(1) + entry(9, 38, 40) + samples::zeros(32) + "whatever"))
        << "after the Finder information";
    EXPECT_TRUE(
        isEmpty(header(1) + entry(9, 38, 70) + samples::zeros(34) + "ATTR" + samples::zeros(32)))
        << "an attribute block without attributes";
    EXPECT_FALSE(isEmpty(header(1) + entry(9, 38, 72) + samples::zeros(34) + "ATTR" +
                         samples::zeros(32) + "!!"))
        << "after such a block";
    EXPECT_FALSE(isEmpty(samples::sidecar(0)));
    // Bytes outside all entries.
    const QByteArray two = header(2) + entry(2, 60, 4) + entry(9, 52, 4);
    const struct {
        const char *what;
        QByteArray bytes;
        bool isEmpty;
    } rows[] = {
        {"zeros", two + samples::zeros(24), true},
        {"after the table", two + "no" + samples::zeros(12), false},
        {"between contents", two + samples::zeros(9) + "x" + samples::zeros(4), false},
        {"at the end", two + samples::zeros(14) + "x", false},
        {"without any entry", header(0) + "x", false},
        {"the filler", samples::hex("0005160700020000") + "Mac OS X        " + number16(0), true},
    };
    for (const auto &row : rows)
        EXPECT_EQ(isEmpty(row.bytes), row.isEmpty) << row.what;
    const QByteArray onlyAttributes =
        samples::zeros(34) + samples::attributeBlock(72, samples::zeros(3));
    EXPECT_FALSE(isEmpty(header(1) + entry(9, 38, static_cast<uint32_t>(onlyAttributes.size())) +
                         onlyAttributes))
        << "an attribute of zeros counts";
}

} // namespace
