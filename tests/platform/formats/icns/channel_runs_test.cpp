// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/ChannelRuns.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace MWCore;

namespace {

using Channel = std::vector<uint8_t>;

QByteArray encoded(const Channel &channel) {
    QByteArray bytes;
    appendChannelRuns(bytes, channel);
    return bytes;
}

/// The length of the shortest encoding, found by trying every one.
std::size_t shortestLength(std::span<const uint8_t> channel) {
    std::size_t best = channel.empty() ? 0 : SIZE_MAX;
    const auto end = std::ranges::find_if(channel, [&](uint8_t v) { return v != channel[0]; });
    const auto equal = static_cast<std::size_t>(end - channel.begin());
    for (std::size_t length = 1; length <= channel.size(); ++length) {
        const std::size_t rest = shortestLength(channel.subspan(length));
        best = std::min(best, (length >= 3 && length <= equal ? 2 : 1 + length) + rest);
    }
    return best;
}

/// Runs and literals of random lengths, long ones too.
Channel randomChannel(std::mt19937 &random, std::size_t size, int longest) {
    Channel channel;
    while (channel.size() < size) {
        const auto value = static_cast<uint8_t>(random() % 3);
        const std::size_t length = 1 + random() % static_cast<unsigned>(longest);
        channel.insert(channel.end(), std::min(length, size - channel.size()), value);
    }
    return channel;
}

} // namespace

TEST(ChannelRuns, IsTheShortestEncoding) {
    constexpr std::size_t kSize = 10;
    for (unsigned pattern = 0; pattern < 1U << kSize; ++pattern) {
        Channel channel;
        for (std::size_t index = 0; index < kSize; ++index)
            channel.push_back(pattern >> index & 1);
        ASSERT_EQ(encoded(channel).size(), qsizetype(shortestLength(channel))) << pattern;
    }
}

TEST(ChannelRuns, ComesBackInAnyLength) {
    std::mt19937 random(1);
    for (const std::size_t size :
         {0U, 1U, 2U, 3U, 128U, 129U, 130U, 131U, 256U, 260U, 1024U, 16384U})
        for (const int longest : {1, 2, 4, 300}) {
            const Channel channel = randomChannel(random, size, longest);
            const QByteArray bytes = encoded(channel);
            Channel decoded(size, 7);
            ASSERT_EQ(decompressRuns(bytes, decoded), RunsFit::Exact) << size << " " << longest;
            ASSERT_EQ(decoded, channel) << size << " " << longest;
            ASSERT_LE(bytes.size(), qsizetype(size + (size + 127) / 128));
            QByteArray literals;
            appendChannelLiterals(literals, channel);
            ASSERT_EQ(decompressRuns(literals, decoded), RunsFit::Exact);
            ASSERT_TRUE(decoded == channel && (size <= 128 || literals.size() > bytes.size()))
                << size;
        }
}

TEST(ChannelRuns, DecodesWhatOthersWriteAndRefusesWhatIsMissing) {
    struct Row {
        const char *what;
        std::string bytes;
        RunsFit fit;
        std::string channels; ///< unless it is too short
    };
    const Row rows[] = {
        {"a run of three", "\x80x", RunsFit::TooShort, ""},
        {"a run beyond the end", "\xFFx", RunsFit::TooLong, "xxxxxx"},
        {"literals beyond the end", "\7abcdefgh", RunsFit::TooLong, "abcdef"},
        {"literals that are cut off", "\5abc", RunsFit::TooShort, ""},
        {"a lead byte alone", "\x82x\x80", RunsFit::TooShort, ""},
        {"a byte too many", std::string("\x83x\0", 3), RunsFit::TooLong, "xxxxxx"},
        {"nothing", "", RunsFit::TooShort, ""},
    };
    for (const Row &row : rows) {
        std::string channels(6, '\0');
        const std::span<uint8_t> target(reinterpret_cast<uint8_t *>(channels.data()), 6);
        const QByteArrayView bytes(row.bytes.data(), qsizetype(row.bytes.size()));
        EXPECT_EQ(decompressRuns(bytes, target), row.fit) << row.what;
        if (row.fit != RunsFit::TooShort) {
            EXPECT_EQ(channels, row.channels) << row.what;
        }
    }
}
