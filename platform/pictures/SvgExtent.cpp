// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/SvgExtent.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include <QString>

namespace MWCore {
namespace {

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

bool isOfNumber(QChar character) {
    return isDigit(character) || character == u'.';
}

/// The exponent of ten at @p at of @p text, which moves behind it; 0 if there is none.
int readExponent(QStringView text, qsizetype &at) {
    if (at >= text.size() || text[at].toLower() != u'e')
        return 0;
    qsizetype end = at + 1;
    const bool isSigned = end < text.size() && (text[end] == u'-' || text[end] == u'+');
    end += isSigned ? 1 : 0;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    bool isNumber = false;
    const int exponent = text.sliced(at + 1, end - at - 1).toInt(&isNumber);
    at = isNumber ? end : at;
    return isNumber ? exponent : 0;
}

/// The absolute value of the number at @p at of @p text, which moves behind it.
double readNumber(QStringView text, qsizetype &at) {
    constexpr int kTen = 10;
    double number = 0;
    double unit = 0; // of the next digit; 0 before the point
    for (; at < text.size() && isOfNumber(text[at]); ++at) {
        if (text[at] != u'.') {
            const int digit = text[at].unicode() - u'0';
            number = unit == 0 ? number * kTen + digit : number + unit * digit;
            unit /= kTen;
        } else if (std::exchange(unit, 1.0 / kTen) != 0) {
            return number;
        }
    }
    const int exponent = readExponent(text, at);
    return exponent == 0 ? number : number * std::pow(kTen, exponent);
}

using Numbers = std::vector<double>;

double sum(const Numbers &numbers) {
    double total = 0;
    for (const double number : numbers)
        total += number;
    return total;
}

double scaleOf(QStringView function, const Numbers &numbers) {
    constexpr std::size_t kLinearNumbers = 4; // the others of a matrix move
    if (function.endsWith(u"matrix"))
        return sum({numbers.begin(), numbers.begin() + static_cast<std::ptrdiff_t>(std::min(
                                                           numbers.size(), kLinearNumbers))});
    if (function.endsWith(u"scale"))
        return numbers.empty() ? 1 : *std::ranges::max_element(numbers);
    if (function.contains(u"skew")) {
        constexpr double kHalfCircle = 180;
        return 1 + std::abs(std::tan(sum(numbers) * std::numbers::pi / kHalfCircle));
    }
    return function.endsWith(u"rotate") ? std::numbers::sqrt2 : 1;
}

} // namespace

std::vector<double> numbersIn(QStringView text) {
    Numbers numbers;
    for (qsizetype at = 0; at < text.size();)
        if (isOfNumber(text[at]))
            numbers.push_back(readNumber(text, at));
        else
            ++at;
    return numbers;
}

/// Every line is at most as long as all numbers together. That it is as long is possible only for
/// those that close a subpath, and for curves that mirror the control point of the curve before.
double longestOutline(QStringView numbers) {
    const Numbers found = numbersIn(numbers);
    const auto isOneOf = [numbers](QChar letter) {
        return numbers.count(letter) + numbers.count(letter.toUpper());
    };
    constexpr double kPerNumber = 3; // of a curve, whose control points are numbers
    constexpr double kPerRadius = 8;
    double lines = isOneOf(u'a') > 0 ? kPerRadius : kPerNumber;
    lines += static_cast<double>(isOneOf(u'z'));
    if (isOneOf(u't') > 0)
        lines += static_cast<double>(found.size());
    return lines * sum(found);
}

double largestScale(QStringView transform) {
    double scale = 1;
    for (qsizetype at = 0; at < transform.size();) {
        const qsizetype start = transform.indexOf(u'(', at);
        const qsizetype end = transform.indexOf(u')', start);
        if (start < 0 || end < 0)
            break;
        scale *= scaleOf(transform.sliced(at, start - at).trimmed(),
                         numbersIn(transform.sliced(start, end - start)));
        at = end + 1;
    }
    return scale;
}

double largestNumber(QStringView text) {
    const Numbers numbers = numbersIn(text);
    return numbers.empty() ? 0 : *std::ranges::max_element(numbers);
}

/// A backslash may hide the name of a property.
double largestWidth(QStringView style) {
    if (style.contains(u'\\'))
        return largestNumber(style);
    double largest = 0;
    for (const QStringView name : {u"stroke-width", u"stroke-miterlimit", u"font-size", u"font:"})
        for (qsizetype at = style.indexOf(name); at >= 0; at = style.indexOf(name, at)) {
            const auto value = style.sliced(at, std::max(style.indexOf(u';', at), at) - at);
            largest = std::max(largest, largestNumber(value.isEmpty() ? style.sliced(at) : value));
            at += name.size();
        }
    return largest;
}

} // namespace MWCore
