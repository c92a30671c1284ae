// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "apps/mwfile/JsonObject.h"
#include "platform/catalogue/FileCatalogue.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace MWCore::mwfile {

/// The reference to the item at @p path. Throws Failure when there is none.
[[nodiscard]] FSRef referenceTo(const std::string &path);

/// The four characters of a type or creator; nothing for 0.
[[nodiscard]] std::optional<std::string> codeText(uint32_t code);

/// A label's name; "None" for 0.
[[nodiscard]] std::string labelText(int number);

/// Adds what the file catalogue tells of the item at @p path; null for what it cannot tell.
void addCatalogue(JsonObject &json, const std::string &path);

/// What is worth a line for people: a label and a value each.
using Lines = std::vector<std::pair<std::string, std::string>>;
[[nodiscard]] Lines catalogueLines(const std::string &path);

} // namespace MWCore::mwfile
