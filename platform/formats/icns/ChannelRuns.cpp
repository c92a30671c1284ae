// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/ChannelRuns.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace MWCore {
namespace {

constexpr std::size_t kLongestLiteral = 128;
constexpr std::size_t kShortestRun = 3;
constexpr std::size_t kLongestRun = 130;
constexpr uint8_t kRunLead = 128; ///< of the shortest run

void appendLiteral(QByteArray &bytes, std::span<const uint8_t> literal) {
    bytes += static_cast<char>(literal.size() - 1);
    bytes.append(reinterpret_cast<const char *>(literal.data()),
                 static_cast<qsizetype>(literal.size()));
}

void appendRun(QByteArray &bytes, uint8_t value, std::size_t length) {
    bytes += static_cast<char>(kRunLead + (length - kShortestRun));
    bytes += static_cast<char>(value);
}

/// Finds the shortest encoding by dynamic programming, from the end of the channel to its
/// beginning. A greedy encoder is not optimal: three equal bytes between literals cost two bytes
/// and a lead byte, as a run, and three as a part of one long literal.
class ShortestEncoding {
public:
    explicit ShortestEncoding(std::span<const uint8_t> channel)
        : channel_(channel), cost_(channel.size() + 1), pieces_(channel.size()) {
        for (std::size_t at = channel.size(); at-- > 0;)
            choosePiece(at);
    }

    void appendTo(QByteArray &bytes) const {
        for (std::size_t at = 0; at < channel_.size(); at = pieces_[at].end)
            if (pieces_[at].isRun)
                appendRun(bytes, channel_[at], pieces_[at].end - at);
            else
                appendLiteral(bytes, channel_.subspan(at, pieces_[at].end - at));
    }

private:
    /// The best first piece of the encoding of the rest of the channel.
    struct Piece {
        std::size_t end;
        bool isRun;
    };

    void choosePiece(std::size_t at) {
        const bool continues = at + 1 < channel_.size() && channel_[at] == channel_[at + 1];
        equalEnd_ = continues ? equalEnd_ : at + 1;
        literalEnd_ = literalEnd(at);
        const std::size_t literalCost = 1 + (literalEnd_ - at) + cost_[literalEnd_];
        pieces_[at] = {literalEnd_, false};
        cost_[at] = literalCost;
        if (equalEnd_ - at < kShortestRun)
            return;
        const std::size_t end = runEnd(at);
        if (const std::size_t runCost = 2 + cost_[end]; runCost <= literalCost) {
            pieces_[at] = {end, true};
            cost_[at] = runCost;
        }
    }

    /// The end of the best run that begins at @p at. The longest one is best, unless it leaves one
    /// or two of the equal bytes, which cost as much or more than the three that a shorter one
    /// leaves.
    [[nodiscard]] std::size_t runEnd(std::size_t at) const {
        std::size_t best = std::min(equalEnd_, at + kLongestRun);
        const std::size_t shortest = std::max(at + kShortestRun, best - (kShortestRun - 1));
        for (std::size_t end = best; end-- > shortest;)
            if (cost_[end] < cost_[best])
                best = end;
        return best;
    }

    /// The end of the best literal that begins at @p at. literalEnd_ is that of the next position;
    /// as long as it can be reached from here, too, only one end is new.
    [[nodiscard]] std::size_t literalEnd(std::size_t at) const {
        const auto cost = [this](std::size_t end) { return cost_[end] + end; };
        const std::size_t last = std::min(channel_.size(), at + kLongestLiteral);
        if (literalEnd_ > at && literalEnd_ <= last)
            return cost(at + 1) < cost(literalEnd_) ? at + 1 : literalEnd_;
        std::size_t best = last;
        for (std::size_t end = last; end-- > at + 1;)
            if (cost(end) < cost(best))
                best = end;
        return best;
    }

    std::span<const uint8_t> channel_;
    std::vector<std::size_t> cost_; ///< bytes for the rest of the channel, by its beginning
    std::vector<Piece> pieces_;
    std::size_t equalEnd_ = 0; ///< of the equal bytes at the current position
    std::size_t literalEnd_ = 0;
};

} // namespace

void appendChannelRuns(QByteArray &bytes, std::span<const uint8_t> channel) {
    ShortestEncoding(channel).appendTo(bytes);
}

void appendChannelLiterals(QByteArray &bytes, std::span<const uint8_t> channel) {
    constexpr std::size_t kLength = kLongestLiteral / 2; // so that more lead bytes are needed
    for (std::size_t at = 0; at < channel.size(); at += kLength)
        appendLiteral(bytes, channel.subspan(at, std::min(kLength, channel.size() - at)));
}

RunsFit decompressRuns(QByteArrayView bytes, std::span<uint8_t> channels) {
    while (!channels.empty()) {
        if (bytes.size() < 2)
            return RunsFit::TooShort;
        const auto lead = static_cast<uint8_t>(bytes[0]);
        const bool isRun = lead >= kRunLead;
        const std::size_t declared = isRun ? lead - kRunLead + kShortestRun : lead + std::size_t(1);
        const std::size_t length = std::min(declared, channels.size());
        const qsizetype taken = isRun ? 2 : 1 + static_cast<qsizetype>(length);
        if (bytes.size() < taken)
            return RunsFit::TooShort;
        if (isRun)
            std::memset(channels.data(), static_cast<unsigned char>(bytes[1]), length);
        else
            std::memcpy(channels.data(), bytes.data() + 1, length);
        if (length < declared)
            return RunsFit::TooLong;
        bytes = bytes.sliced(taken);
        channels = channels.subspan(length);
    }
    return bytes.isEmpty() ? RunsFit::Exact : RunsFit::TooLong;
}

} // namespace MWCore
