// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/PropertyList.h"

#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <QDateTime>

namespace {

using MWCore::kPropertyListDepth;
using MWCore::readPropertyList;

/// The lists that Python writes for its expressions, one per line.
QByteArrayList written(const QByteArray &expressions, const char *format) {
    const std::string script = "import sys, plistlib, datetime\n"
                               "for line in sys.stdin:\n"
                               "    list = plistlib.dumps(eval(line), fmt=plistlib." +
                               std::string(format) + ", sort_keys=False)\n    print(list.hex())";
    ProcessOptions options;
    options.input = expressions.toStdString();
    const auto result = runProcess({"python3", "-c", script}, options);
    EXPECT_EQ(result.status, 0) << result.errorOutput;
    QByteArrayList lists;
    for (const QByteArray &line : QByteArray::fromStdString(result.output).trimmed().split('\n'))
        lists += QByteArray::fromHex(line);
    return lists;
}

struct ValueRow {
    const char *expression;
    QVariant value;
};
const ValueRow kValueRows[] = {
    {"''", ""},
    {"' <a>&\"\\' \\n日\\U0001F600'", QString::fromUtf8(" <a>&\"' \n日\U0001F600")},
    {"0", 0LL},
    {"65535", 65'535LL},
    {"2**32 - 1", 4'294'967'295LL},
    {"-1", -1LL},
    {"-2**63", std::numeric_limits<qlonglong>::min()},
    {"2**64 - 1", std::numeric_limits<qulonglong>::max()},
    {"1.5e300", 1.5e300},
    {"True", true},
    {"False", false},
    {"datetime.datetime(1970, 1, 1, 0, 0, 1)", QDateTime::fromSecsSinceEpoch(1, Qt::UTC)},
    {"datetime.datetime(2038, 1, 19, 3, 14, 8)",
     QDateTime::fromSecsSinceEpoch(2'147'483'648, Qt::UTC)},
    {"bytes(range(256)) * 2",
     [] {
         QByteArray bytes;
         for (int byte = 0; byte < 512; ++byte)
             bytes += static_cast<char>(byte);
         return bytes;
     }()},
    {"b''", QByteArray()},
    {"[]", QVariantList()},
    {"{}", QVariantMap()},
    {"{'a': [1, {'b': 'c'}, 'x' * 20], 'd': {'a': 1}}",
     QVariantMap{{"a", QVariantList{1LL, QVariantMap{{"b", "c"}}, QString(20, 'x')}},
                 {"d", QVariantMap{{"a", 1LL}}}}},
    {"[[n] for n in range(300)]",
     [] {
         QVariantList lists;
         for (qlonglong number = 0; number < 300; ++number)
             lists += QVariant(QVariantList{number});
         return lists;
     }()},
};

TEST(PropertyList, ReadsListsWrittenByPython) {
    QByteArray expressions;
    for (const ValueRow &row : kValueRows)
        (expressions += row.expression) += '\n';
    for (const char *format : {"FMT_XML", "FMT_BINARY"}) {
        const QByteArrayList lists = written(expressions, format);
        ASSERT_EQ(std::size(kValueRows), static_cast<std::size_t>(lists.size()));
        for (qsizetype index = 0; index < lists.size(); ++index)
            EXPECT_EQ(readPropertyList(lists[index]), kValueRows[index].value)
                << format << ' ' << kValueRows[index].expression;
    }
}

struct XmlRow {
    const char *what;
    QByteArray body; ///< within <plist>
    QVariant value;
};
const XmlRow kXmlRows[] = {
    {"CDATA and comments", "<string>a<!-- b --><![CDATA[<c>&amp;]]>d</string>", "a<c>&amp;d"},
    {"references", "<string>&#65;&#x1F600;&apos;</string>", QString::fromUtf8("A\U0001F600'")},
    {"line ends", "<string>a\r\nb\rc&#13;</string>", "a\nb\nc\r"},
    {"attributes", "<array a='>' b=\"/>\"><true c=''/></array>", QVariantList{true}},
    {"hexadecimal", "<integer>-0x1F</integer>", -31LL},
    {"data in several lines", "<data>\n\tQUJ\n\tD\n</data>", QByteArray("ABC")},
    {"invalid UTF-8", "<string>a\xFF</string>", QString::fromUtf16(u"a\xDCFF")},
    {"custom entity", "<string>&own;</string>", {}},
    {"reference without end", "<string>&amp</string>", {}},
    {"reference to a surrogate", "<string>&#xD800;</string>", {}},
    {"reference to nothing", "<string>&#0;</string>", {}},
    {"not a number", "<integer>12a</integer>", {}},
    {"number too large", "<integer>18446744073709551616</integer>", {}},
    {"not a date", "<date>2020-13-01T00:00:00Z</date>", {}},
    {"not base64", "<data>A*BC</data>", {}},
    {"unknown element", "<uid>1</uid>", {}},
    {"element in a text", "<string>a<true/></string>", {}},
    {"key without value", "<dict><key>a</key></dict>", {}},
    {"value without key", "<dict><true/></dict>", {}},
    {"text between elements", "<array>a<true/></array>", {}},
    {"wrong end", "<array></dict>", {}},
    {"two values", "<true/><true/>", {}},
    {"nothing", "", {}},
    {"unclosed array", "<array><true/>", {}},
    {"unclosed comment", "<!-- <true/>", {}},
    {"as deep as allowed",
     [] {
         return QByteArray("<array>").repeated(kPropertyListDepth) + "<true/>" +
                QByteArray("</array>").repeated(kPropertyListDepth);
     }(),
     [] {
         QVariant value = true;
         for (int depth = 0; depth < kPropertyListDepth; ++depth)
             value = QVariantList{value};
         return value;
     }()},
    {"too deep", QByteArray("<array>").repeated(300'000), {}},
    {"deep in dictionaries", QByteArray("<dict><key/>").repeated(300'000), {}},
    {"many attributes", "<true " + QByteArray("a='' ").repeated(300'000) + "/>", true},
    {"many line ends", "<string>" + QByteArray("\r\n").repeated(300'000) + "</string>",
     QString(300'000, '\n')},
};

TEST(PropertyList, ReadsXml) {
    for (const XmlRow &row : kXmlRows)
        EXPECT_EQ(readPropertyList("<?xml version='1.0'?><plist>" + row.body + "</plist>"),
                  row.value)
            << row.what;
}

TEST(PropertyList, ReadsXmlInItsEncodings) {
    const QString text = QStringLiteral("<plist><string>ü</string></plist>");
    const auto *const units = reinterpret_cast<const char *>(text.utf16());
    EXPECT_EQ(readPropertyList("\xEF\xBB\xBF" + text.toUtf8()), "ü");
    EXPECT_EQ(readPropertyList(QByteArray(units, text.size() * 2)), "ü");
    EXPECT_EQ(readPropertyList("\xFF\xFE" + QByteArray(units, text.size() * 2)), "ü");
}

TEST(PropertyList, NeverDeclaresEntities) {
    const QByteArray usual = R"(<!DOCTYPE plist PUBLIC "-//A//DTD 1.0//EN" "http://a/b.dtd">)";
    const QByteArray own = R"(<!DOCTYPE plist [<!ENTITY a "b">]>)";
    EXPECT_EQ(readPropertyList(usual + "<plist><true/></plist>"), true);
    EXPECT_EQ(readPropertyList(own + "<plist><true/></plist>"), QVariant());
}

QByteArray bigEndian(qsizetype number, int size) {
    QByteArray bytes;
    for (int byte = size - 1; byte >= 0; --byte)
        bytes += static_cast<char>(number >> (8 * byte));
    return bytes;
}

QByteArray reference(qsizetype index) {
    return bigEndian(index, 2);
}

/// A binary list of @p objects, the first of which is the top object.
QByteArray binaryList(const QByteArrayList &objects) {
    QByteArray list = "bplist00";
    QByteArray offsets;
    for (const QByteArray &object : objects) {
        offsets += bigEndian(list.size(), 2);
        list += object;
    }
    const qsizetype table = list.size();
    return list + offsets + QByteArray(6, '\0') + "\x02\x02" + bigEndian(objects.size(), 8) +
           bigEndian(0, 8) + bigEndian(table, 8);
}

/// Nested arrays: each contains the next one @p breadth times; the last one contains a number.
QByteArray nestedArrays(qsizetype depth, int breadth) {
    QByteArrayList objects;
    for (qsizetype index = 0; index < depth; ++index)
        objects += static_cast<char>(0xA0 + breadth) + reference(index + 1).repeated(breadth);
    return binaryList(objects << QByteArray("\x10\x07", 2));
}

TEST(PropertyList, BinaryListsCannotExpandOrRecurse) {
    EXPECT_TRUE(readPropertyList(nestedArrays(kPropertyListDepth, 1)).isValid());
    EXPECT_FALSE(readPropertyList(nestedArrays(kPropertyListDepth + 1, 1)).isValid());
    EXPECT_FALSE(readPropertyList(nestedArrays(10'000, 1)).isValid());
    EXPECT_TRUE(readPropertyList(nestedArrays(4, 4)).isValid()) << "shared within reason";
    EXPECT_FALSE(readPropertyList(nestedArrays(12, 14)).isValid()) << "shared 14^12 times";
    EXPECT_FALSE(readPropertyList(nestedArrays(100, 2)).isValid()) << "2^100 would overflow";
}

/// An array of chains, each of which ends with the previous chain, so that the reader never
/// recurses deeply at one time.
TEST(PropertyList, BinaryListsCannotExceedTheDepthThroughSharing) {
    constexpr int kChains = 500;
    constexpr qsizetype kLinks = 30;
    QByteArrayList objects = {"\xAF\x11" + reference(kChains)};
    for (int chain = 0; chain < kChains; ++chain)
        objects[0] += reference(1 + chain * kLinks);
    for (int chain = 0; chain < kChains; ++chain)
        for (qsizetype link = 0; link < kLinks; ++link) {
            const qsizetype before = chain == 0 ? 0 : 1 + (chain - 1) * kLinks;
            const bool isLast = link + 1 == kLinks;
            const bool isEmpty = isLast && chain == 0;
            objects += isEmpty ? QByteArray("\xA0")
                               : "\xA1" + reference(isLast ? before : objects.size() + 1);
        }
    EXPECT_FALSE(readPropertyList(binaryList(objects)).isValid());
}

struct BinaryRow {
    const char *what;
    QByteArrayList objects;
};
const BinaryRow kDamagedRows[] = {
    {"an array that contains itself", {"\xA1" + reference(0)}},
    {"two arrays that contain each other", {"\xA1" + reference(1), "\xA1" + reference(0)}},
    {"reference beyond the end", {"\xA1" + reference(1)}},
    {"a key that is not a string", {"\xD1" + reference(1) + reference(1), "\x09"}},
    {"text beyond the end",
     {"\x5A"
      "abc"}},
    {"huge count", {QByteArray("\xAF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 10)}},
    {"count that overflows", {QByteArray("\x6F\x13\x80\x00\x00\x00\x00\x00\x00\x00", 10)}},
    {"huge integer", {QByteArray("\x1F")}},
    {"count that is not an integer",
     {QByteArray("\x5F\x51\x01"
                 "abc")}},
    {"not a date", {QByteArray("\x33\x7F\xF8\x00\x00\x00\x00\x00\x00", 9)}},
    {"null", {QByteArray("\x00", 1)}},
    {"unknown kind", {QByteArray("\x80\x01")}},
    {"overlapping texts",
     [] {
         QByteArrayList objects = {QByteArray("\xA9")};
         for (qsizetype index = 1; index < 10; ++index)
             objects[0] += reference(index);
         for (char index = 1; index < 10; ++index)
             objects += QByteArray("\x5F\x10").append(static_cast<char>(27 - 3 * index));
         return objects;
     }()},
};

TEST(PropertyList, RefusesDamagedBinaryLists) {
    for (const BinaryRow &row : kDamagedRows)
        EXPECT_FALSE(readPropertyList(binaryList(row.objects)).isValid()) << row.what;
}

} // namespace
