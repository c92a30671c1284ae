// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/IconFamilyReport.h>

#include <cstdint>
#include <string>
#include <vector>

/// Texts for the elements of icon families.
namespace MWCore::mwfile {

/// The four characters of an element's type; its number in hexadecimal if they cannot be printed.
[[nodiscard]] std::string elementTypeText(uint32_t type);

/// Width and height in points and, if it is not 1, the scale: "16x16@2x". @p by stands between
/// width and height.
[[nodiscard]] std::string imageSizeText(QSize pixels, int scale, const std::string &by);

/// What the payload of an element is: "RGB, compressed", "256 colours".
[[nodiscard]] std::string payloadText(const IconElementReport &element);

/// The word for a nested family of the type @p type: "dark"; its type if it has none.
[[nodiscard]] std::string nestedFamilyName(uint32_t type);

/// What is wrong with a family: "ic08 is damaged".
[[nodiscard]] std::vector<std::string> problemTexts(const IconFamilyReport &report);

/// "1 image", "2 images".
[[nodiscard]] std::string countedText(std::size_t count, const std::string &what);

} // namespace MWCore::mwfile
