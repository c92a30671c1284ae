// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/support/counts.h"

#include <cstdlib>
#include <stdexcept>

namespace counts {

std::vector<long> fromArguments(int argumentCount, char **arguments, std::vector<long> defaults) {
    std::vector<long> numbers;
    for (int index = 1; index < argumentCount; ++index) {
        char *end = nullptr;
        numbers.push_back(std::strtol(arguments[index], &end, 10));
        if (*end != '\0' || numbers.back() < 1)
            throw std::runtime_error(std::string(arguments[index]) + " is not a number of entries");
    }
    return numbers.empty() ? defaults : numbers;
}

std::string withThousands(long number) {
    std::string text;
    const std::string digits = std::to_string(number);
    for (std::size_t index = 0; index < digits.size(); ++index) {
        if (index > 0 && (digits.size() - index) % 3 == 0)
            text += ',';
        text += digits[index];
    }
    return text;
}

int roundsFor(long entries) {
    return entries <= 10'000 ? 31 : entries <= 100'000 ? 15 : 5;
}

} // namespace counts
