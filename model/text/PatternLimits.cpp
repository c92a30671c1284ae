// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/text/PatternLimits.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace MWCore {
namespace {

/// Scans a pattern and adds up the size of its expansion.
class PatternScanner {
public:
    explicit PatternScanner(const QByteArray &pattern) : rest_(pattern.constData()) {
        while (*rest_ && isWithinLimits_)
            takeNext();
    }

    [[nodiscard]] bool isWithinLimits() const { return isWithinLimits_; }

private:
    struct Piece {
        int64_t size = 0; ///< parts when expanded
        int depth = 0;    ///< of nested repetitions
    };
    struct Group {
        Piece whole;
        Piece last;
    };

    void takeNext() {
        switch (*rest_++) {
        case '\\':
            isWithinLimits_ = *rest_ < '1' || *rest_ > '9';
            rest_ += *rest_ != 0;
            return add({1, 0});
        case '[':
            skipBrackets();
            return add({1, 0});
        case '(':
            isWithinLimits_ = groups_.size() <= kMostGroups;
            return groups_.push_back({});
        case ')': {
            Piece inside = groups_.back().whole;
            ++inside.size;
            if (groups_.size() > 1)
                groups_.pop_back();
            return add(inside);
        }
        case '*':
        case '?':
            return repeat(1);
        case '+':
            return repeat(2);
        case '{':
            return repeat(takeCount());
        default:
            return add({1, 0});
        }
    }

    void add(Piece piece) {
        Group &group = groups_.back();
        group.last = piece;
        group.whole.size += piece.size;
        group.whole.depth = std::max(group.whole.depth, piece.depth);
        isWithinLimits_ = isWithinLimits_ && group.whole.size <= kLargest;
    }

    void repeat(int64_t times) {
        Piece piece = groups_.back().last;
        groups_.back().whole.size -= piece.size;
        piece.size *= times;
        ++piece.depth;
        add(piece);
        isWithinLimits_ = isWithinLimits_ && piece.depth <= kDeepest;
    }

    /// The larger number in "{2,3}"; the number in "{2,}" plus one.
    int64_t takeCount() {
        int64_t largest = 1;
        for (int64_t number = 0; *rest_ && *rest_ != '}'; ++rest_) {
            const bool isDigit = *rest_ >= '0' && *rest_ <= '9';
            number = isDigit ? std::min(number * 10 + (*rest_ - '0'), kLargest + 1) : 0;
            largest = std::max(largest + (*rest_ == ',' ? 1 : 0), number);
        }
        rest_ += *rest_ != 0;
        return largest;
    }

    void skipBrackets() {
        rest_ += *rest_ == '^';
        rest_ += *rest_ == ']';
        while (*rest_ && *rest_ != ']') {
            const char kind = *rest_++ == '[' ? *rest_ : '\0';
            if (kind != ':' && kind != '.' && kind != '=')
                continue;
            ++rest_;
            while (*rest_ && !(rest_[0] == kind && rest_[1] == ']'))
                ++rest_;
            rest_ += *rest_ ? 2 : 0;
        }
        rest_ += *rest_ != 0;
    }

    static constexpr int64_t kLargest = 10'000;
    static constexpr int kDeepest = 3;
    static constexpr std::size_t kMostGroups = 250;

    const char *rest_;
    std::vector<Group> groups_ = {{}};
    bool isWithinLimits_ = true;
};

} // namespace

bool isWithinLimits(const QByteArray &pattern) {
    constexpr qsizetype kLongest = 4096;
    return pattern.size() <= kLongest && PatternScanner(pattern).isWithinLimits();
}

} // namespace MWCore
