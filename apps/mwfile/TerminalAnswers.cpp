// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "TerminalAnswers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace MWCore::mwfile {
namespace {

constexpr char kEscape = '\033';
constexpr char kBell = '\a';
constexpr char kControlSequence = '[';
constexpr char kDeviceControl = 'P';
constexpr char kSystemCommand = ']';
constexpr char kApplicationCommand = '_';

/// No answer is longer.
constexpr std::size_t kLongestAnswer = 4096;

/// The numbers between semicolons; -1 for anything else.
std::vector<int> numbersIn(std::string_view text) {
    std::vector<int> numbers;
    while (true) {
        const std::string_view part = text.substr(0, text.find(';'));
        int &number = numbers.emplace_back(-1);
        std::from_chars(part.data(), part.data() + part.size(), number);
        if (part.size() == text.size())
            return numbers;
        text.remove_prefix(part.size() + 1);
    }
}

/// Removes @p prefix from the beginning of @p text, if it is there.
bool takePrefix(std::string_view &text, std::string_view prefix) {
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

/// A channel of one to four hexadecimal digits as a number up to 255; nullopt if it is none.
std::optional<int> channel(std::string_view digits) {
    constexpr int kHexadecimal = 16;
    constexpr unsigned kMost = 255;
    unsigned value = 0;
    const char *const end = digits.data() + digits.size();
    if (digits.empty() || digits.size() > 4 ||
        std::from_chars(digits.data(), end, value, kHexadecimal).ptr != end)
        return std::nullopt;
    const unsigned largest = (1U << (4 * digits.size())) - 1;
    return static_cast<int>((value * kMost + largest / 2) / largest);
}

/// A colour as XParseColor() reads it, "rgb:ffff/8080/0000"; there may be an alpha channel.
std::optional<QRgb> colour(std::string_view text) {
    if (!takePrefix(text, "rgb:") && !takePrefix(text, "rgba:"))
        return std::nullopt;
    const std::size_t first = text.find('/');
    const std::size_t second = text.find('/', first + 1);
    if (first == std::string_view::npos || second == std::string_view::npos)
        return std::nullopt;
    const auto red = channel(text.substr(0, first));
    const auto green = channel(text.substr(first + 1, second - first - 1));
    const auto blue = channel(text.substr(second + 1, text.find('/', second + 1) - second - 1));
    return red && green && blue ? std::optional(qRgb(*red, *green, *blue)) : std::nullopt;
}

/// Whether iTerm2's list of features, "T3CwLrF", has the letter @p feature, alone or with a number.
bool hasFeature(std::string_view features, char feature) {
    for (std::size_t at = features.find(feature); at != std::string_view::npos;
         at = features.find(feature, at + 1))
        if (at + 1 == features.size() || features[at + 1] < 'a' || features[at + 1] > 'z')
            return true;
    return false;
}

/// The end of the body that begins at @p begin, with the final byte of a control sequence; npos if
/// it has not arrived yet. Another escape ends anything.
std::size_t endOfBody(std::string_view bytes, char kind, std::size_t begin) {
    if (kind == kDeviceControl || kind == kSystemCommand || kind == kApplicationCommand)
        return bytes.find_first_of(std::array{kEscape, kBell}.data(), begin, 2);
    if (kind != kControlSequence)
        return begin;
    while (begin < bytes.size() && bytes[begin] < '@' && bytes[begin] != kEscape)
        ++begin;
    if (begin == bytes.size())
        return std::string_view::npos;
    return bytes[begin] == kEscape ? begin : begin + 1;
}

} // namespace

void TerminalAnswers::add(std::string_view bytes) {
    rest_ += bytes;
    while (takeOne())
        ;
    if (rest_.size() > kLongestAnswer)
        rest_.clear();
}

/// Reads and removes the first sequence. False if there is no whole one.
bool TerminalAnswers::takeOne() {
    constexpr std::size_t kBegin = 2; // of the body
    rest_.erase(0, std::min(rest_.find(kEscape), rest_.size()));
    if (rest_.size() < kBegin)
        return false;
    const char kind = rest_[1];
    const std::size_t end = endOfBody(rest_, kind, kBegin);
    if (end == std::string::npos)
        return false;
    read(kind, std::string_view(rest_).substr(kBegin, end - kBegin));
    rest_.erase(0, end);
    return true;
}

void TerminalAnswers::read(char kind, std::string_view body) {
    if (kind == kControlSequence)
        readControlSequence(body);
    else if (kind == kSystemCommand)
        readSystemCommand(body);
    else if (kind == kDeviceControl && takePrefix(body, ">|"))
        name_ = body;
    else if (kind == kApplicationCommand && takePrefix(body, "Gi=31;"))
        hasKittyGraphics_ = body == "OK";
}

void TerminalAnswers::readControlSequence(std::string_view body) {
    constexpr int kSixelAttribute = 4;
    constexpr int kCellSize = 6;
    if (body.empty())
        return;
    const char final = body.back();
    body.remove_suffix(1);
    const bool isPrivate = takePrefix(body, "?");
    const std::vector<int> numbers = numbersIn(body);
    if (isPrivate && final == 'c') {
        ++attributeCount_;
        hasSixel_ = std::ranges::count(numbers, kSixelAttribute) > 0;
    } else if (isPrivate && final == 'S') {
        if (numbers.size() == 3 && numbers[0] == 1 && numbers[1] == 0 && numbers[2] >= 2)
            colourRegisters_ = numbers[2];
    } else if (final == 't' && numbers.size() == 3 && numbers[0] == kCellSize) {
        cell_ = {numbers[2], numbers[1]};
    }
}

void TerminalAnswers::readSystemCommand(std::string_view body) {
    if (takePrefix(body, "11;"))
        background_ = colour(body);
    else if (takePrefix(body, "1337;Capabilities="))
        hasInlineImages_ = hasFeature(body, 'F');
}

} // namespace MWCore::mwfile
