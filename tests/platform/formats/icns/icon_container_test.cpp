// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/BigEndian.h"
#include "platform/formats/icns/IconContainer.h"
#include "platform/formats/icns/IconFamilyData.h"

#include <random>

#include <gtest/gtest.h>

using namespace MWCore;

namespace {

QByteArray element(const char (&type)[5], const QByteArray &payload) {
    QByteArray bytes(type, 4);
    appendNumber(bytes, uint32_t(payload.size() + IconContainer::kHeaderLength));
    return bytes + payload;
}

QByteArray family(const QByteArray &elements) {
    return familyFromNestedBytes(elements);
}

/// The table of contents for these elements.
QByteArray tableFor(const QByteArray &elements) {
    QByteArray table;
    const IconContainer container(family(elements));
    for (const IconContainer::Element &one : container.elements()) {
        appendNumber(table, one.type);
        appendNumber(table, uint32_t(one.length + IconContainer::kHeaderLength));
    }
    return element("TOC ", table);
}

const QByteArray kMask(256, '\x7F');

} // namespace

TEST(IconContainer, ReadsUpToTheDamage) {
    using enum IconContainer::Damage;
    const QByteArray good = element("s8mk", kMask) + element("????", "unknown");
    const auto withLength = [&good](uint32_t length) {
        QByteArray bytes = family(good + element("s8mk", {}));
        putNumber(bytes, bytes.size() - 4, length);
        return bytes;
    };
    const auto declared = [&good](uint32_t length) {
        QByteArray bytes = family(good);
        putNumber(bytes, 4, length);
        return bytes;
    };
    struct Row {
        const char *what;
        QByteArray bytes;
        IconContainer::Damage damage;
        std::size_t elements;
    };
    const Row rows[] = {
        {"no bytes", {}, None, 0},
        {"only a header", family({}), None, 0},
        {"a good family", family(good), None, 2},
        {"half a header", QByteArray("icns\0\0", 6), NoFamily, 0},
        {"another format", QByteArray("snci") + family(good).mid(4), NoFamily, 0},
        {"an element of length 0", withLength(0), ElementTooShort, 2},
        {"an element of length 7", withLength(7), ElementTooShort, 2},
        {"an empty element", withLength(8), None, 3},
        {"an element beyond the end", withLength(9), ElementTooLong, 2},
        {"an element of length 0xFFFFFFFF", withLength(0xFFFFFFFF), ElementTooLong, 2},
        {"a total length of 0", declared(0), WrongLength, 0},
        {"a total length of 0xFFFFFFFF", declared(0xFFFFFFFF), WrongLength, 2},
        {"a shorter total length", declared(8 + 8 + 256), WrongLength, 1},
        {"bytes after the last element", family(good + "rest"), Truncated, 2},
    };
    for (const Row &row : rows) {
        const IconContainer container(row.bytes);
        EXPECT_EQ(container.damage(), row.damage) << row.what;
        EXPECT_EQ(container.elements().size(), row.elements) << row.what;
        IconFamilyHandle changed = row.bytes;
        const OSStatus status =
            SetIconFamilyData(changed, fourCharCode("l8mk"), QByteArray(1024, 1));
        EXPECT_EQ(status, row.damage == None ? noErr : mapReadErr) << row.what;
        EXPECT_EQ(changed == row.bytes, row.damage != None) << row.what;
    }
}

TEST(IconContainer, ChangesOneElementAndKeepsEveryOtherByte) {
    const QByteArray before = element("icnV", "1.00") + element("\xFD\xD9\x2F\xA8", "dark");
    const QByteArray after = element("slct", "selected") + element("zzzz", "unknown");
    IconFamilyHandle bytes = family(before + element("s8mk", kMask) + after);
    const QByteArray other(256, '\x01');
    const uint32_t type = fourCharCode("s8mk");
    ASSERT_EQ(SetIconFamilyData(bytes, type, other), noErr);
    EXPECT_EQ(bytes, family(before + element("s8mk", other) + after));
    ASSERT_EQ(SetIconFamilyData(bytes, fourCharCode("l8mk"), QByteArray(1024, 1)), noErr);
    EXPECT_EQ(bytes, family(before + element("s8mk", other) + after +
                            element("l8mk", QByteArray(1024, 1))));
    ASSERT_EQ(RemoveIconFamilyData(bytes, fourCharCode("l8mk")), noErr);
    ASSERT_EQ(RemoveIconFamilyData(bytes, type), noErr);
    EXPECT_EQ(bytes, family(before + after));
    EXPECT_EQ(RemoveIconFamilyData(bytes, type), resNotFound);
}

TEST(IconContainer, KeepsATableOfContentsCorrect) {
    const QByteArray one = element("s8mk", kMask);
    const QByteArray two = element("l8mk", QByteArray(1024, 1));
    const QByteArray odd = element("TOC ", "made up");
    const auto changed =
        familyWithElement(family(tableFor(one) + one), fourCharCode("l8mk"), QByteArray(1024, 1));
    EXPECT_EQ(changed, family(tableFor(one + two) + one + two));
    EXPECT_EQ(familyWithoutElement(*changed, fourCharCode("s8mk")), family(tableFor(two) + two));
    EXPECT_EQ(familyWithElement(family(odd + one), fourCharCode("l8mk"), QByteArray(1024, 1)),
              family(odd + one + two))
        << "one that was wrong before is not ours to change";
}

TEST(IconContainer, SizesOfDataAreChecked) {
    IconFamilyHandle bytes;
    for (const IconElementType &type : iconElementTypes()) {
        if (type.size.isEmpty())
            continue;
        const qsizetype right =
            fixedLength(type).value_or(qsizetype(type.size.width()) * type.size.height() * 4);
        for (const qsizetype wrong : {qsizetype(0), right - 1, right + 1})
            EXPECT_EQ(SetIconFamilyData(bytes, type.type, QByteArray(wrong, 1)), paramErr);
        EXPECT_TRUE(bytes.isEmpty());
    }
}

/// Each element of 32-bit pixels comes back as it was set, except the alpha of RGB elements; no
/// payload has a length by which readers would take it for uncompressed pixels.
TEST(IconContainer, PixelsComeBack) {
    std::mt19937 random(2);
    IconFamilyHandle bytes;
    for (const IconElementType &type : iconElementTypes()) {
        if (type.size.isEmpty() || fixedLength(type))
            continue;
        const qsizetype pixels = qsizetype(type.size.width()) * type.size.height();
        for (const unsigned colours : {2U, 256U}) {
            QByteArray data(pixels * 4, '\0');
            for (char &byte : data)
                byte = char(random() % colours);
            ASSERT_EQ(SetIconFamilyData(bytes, type.type, data, 1), noErr);
            const IconContainer container(bytes);
            const qsizetype length = container.find(type.type)->length;
            EXPECT_TRUE(length != pixels * 3 && length != pixels * 4);
            if (type.mask != 0 && type.encoding != IconEncoding::File)
                for (qsizetype at = 0; at < data.size(); at += 4)
                    data[at] = '\0';
            OSStatus status = ioErr;
            EXPECT_EQ(GetIconFamilyData(bytes, type.type, &status), data) << type.type;
            EXPECT_EQ(status, noErr);
        }
    }
}

TEST(IconContainer, ReadsWhatOthersStoreWithoutCompression) {
    const QByteArray rgb = QByteArray("\x10\x20\x30").repeated(256);
    const QByteArray xrgb = QByteArray("\x7F\x10\x20\x30").repeated(256);
    const QByteArray crossing = QByteArray("\xFF\x33").repeated(5) + "\xF3\x33";
    struct Row {
        const char *what;
        QByteArray element;
        const char *type;
        QByteArray pixel; ///< nothing if it is refused
    };
    const Row rows[] = {
        {"three bytes a pixel", rgb, "is32", QByteArray("\0\x10\x20\x30", 4)},
        {"four bytes a pixel", xrgb, "is32", QByteArray("\0\x10\x20\x30", 4)},
        {"ARGB pixels", "ARGB" + xrgb, "ic04", QByteArray("\x7F\x10\x20\x30", 4)},
        {"ARGB in a newer type", "ARGB" + xrgb, "icp4", QByteArray("\x7F\x10\x20\x30", 4)},
        {"a run across channels", crossing, "is32", QByteArray("\0\x33\x33\x33", 4)},
        {"four bytes", "\1\2\3\4", "is32", {}},
        {"a JPEG 2000 header alone", QByteArray("\xFF\x4F\xFF\x51", 4), "icp4", {}},
        {"nothing", {}, "ic04", {}},
    };
    for (const Row &row : rows) {
        IconFamilyHandle bytes;
        char type[5] = {row.type[0], row.type[1], row.type[2], row.type[3], 0};
        bytes = family(element(type, row.element));
        OSStatus status = noErr;
        const auto data = GetIconFamilyData(bytes, fourCharCode(type), &status);
        EXPECT_EQ(data.has_value(), !row.pixel.isEmpty()) << row.what;
        EXPECT_EQ(status, row.pixel.isEmpty() ? mapReadErr : noErr) << row.what;
        if (data) {
            EXPECT_EQ(data->right(4), row.pixel) << row.what;
        }
    }
    IconFamilyHandle padded = family(element("it32", "\1\2\3\4"));
    OSStatus status = noErr;
    EXPECT_FALSE(GetIconFamilyData(padded, fourCharCode("it32"), &status));
}
