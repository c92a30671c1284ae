// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/FileSystemText.h"

#include <gtest/gtest.h>

#include <random>

#include <QByteArrayList>

namespace {

using MWCore::fileSystemRepresentation;
using MWCore::stringWithFileSystemRepresentation;

TEST(FileSystemText, EveryByteSequenceSurvivesTheRoundTrip) {
    std::minstd_rand random(7);
    const QByteArrayList interesting = {
        "\xEF\xBB\xBFname", "\xED\xA0\x80", "\xC3",     "\xF0\x9F\x98\x80",     "\xF4\x90\x80\x80",
        "\xC0\xAF",         "\xF0\x9F",     "\xE2\x82", "\xF0\x90\x82\x80\x80",
    };
    for (int round = 0; round < 20'000; ++round) {
        QByteArray bytes;
        for (auto piece = random() % 6; piece > 0; --piece)
            if (random() % 3 == 0)
                bytes += interesting[static_cast<qsizetype>(random()) % interesting.size()];
            else
                bytes += static_cast<char>(1 + random() % 255);
        const QString text = stringWithFileSystemRepresentation(bytes);
        ASSERT_EQ(fileSystemRepresentation(text), bytes) << bytes.toHex().toStdString();
    }
}

TEST(FileSystemText, ValidTextIsConvertedAsByQt) {
    const QString texts[] = {"", "plain", "grün", "日本語",
                             QString::fromUtf8("\U0001F600 \U00010080")};
    for (const QString &text : texts) {
        EXPECT_EQ(fileSystemRepresentation(text), text.toUtf8());
        EXPECT_EQ(stringWithFileSystemRepresentation(text.toUtf8()), text);
    }
    EXPECT_FALSE(stringWithFileSystemRepresentation("").isNull());
    EXPECT_TRUE(stringWithFileSystemRepresentation({}).isNull());
}

TEST(FileSystemText, ImpossibleNamesAreRefused) {
    const char16_t withNull[] = {u'a', 0, u'b'};
    const char16_t lonelyHigh[] = {u'a', 0xD800, u'b'};
    const char16_t asciiCarrier[] = {u'a', 0xDC2F}; // would smuggle in a "/"
    EXPECT_EQ(fileSystemRepresentation(QString::fromUtf16(withNull, 3)), std::nullopt);
    EXPECT_EQ(fileSystemRepresentation(QString::fromUtf16(lonelyHigh, 3)), std::nullopt);
    EXPECT_EQ(fileSystemRepresentation(QString::fromUtf16(asciiCarrier, 2)), std::nullopt);
}

} // namespace
