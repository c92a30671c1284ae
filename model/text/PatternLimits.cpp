// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/text/PatternLimits.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace MWCore {
namespace {

/// Goes through a pattern and adds up what becomes of it.
class ResolutionContext {
public:
    explicit ResolutionContext(const QByteArray &pattern) : rest_(pattern.constData()) {
        while (*rest_ && isBearable_)
            takeNext();
    }

    [[nodiscard]] bool isWithinLimits() const { return isBearable_; }

private:
    struct Piece {
        int64_t size = 0; ///< parts when written out
        int depth = 0;    ///< of repetitions in repetitions
    };
    struct Group {
        Piece whole;
        Piece last;
    };

    void takeNext() {
        switch (*rest_++) {
        case '\\':
            isBearable_ = *rest_ < '1' || *rest_ > '9';
            rest_ += *rest_ != 0;
            return add({1, 0});
        case '[':
            skipBrackets();
            return add({1, 0});
        case '(':
            isBearable_ = groups_.size() <= kMostGroups;
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
        isBearable_ = isBearable_ && group.whole.size <= kLargest;
    }

    void repeat(int64_t times) {
        Piece piece = groups_.back().last;
        groups_.back().whole.size -= piece.size;
        piece.size *= times;
        ++piece.depth;
        add(piece);
        isBearable_ = isBearable_ && piece.depth <= kDeepest;
    }

    /// The larger number of "{2,3}"; one more than that of "{2,}".
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
    bool isBearable_ = true;
};

} // namespace

bool isWithinLimits(const QByteArray &pattern) {
    constexpr qsizetype kLongest = 4096;
    return pattern.size() <= kLongest && ResolutionContext(pattern).isWithinLimits();
}

} // namespace MWCore
