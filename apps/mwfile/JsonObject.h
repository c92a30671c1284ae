// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

namespace MWCore::mwfile {

/// A JSON object on one line (RFC 8259), built member by member in order. Texts may have any bytes:
/// an invalid UTF-8 byte is written as the lone surrogate \udcNN, so that it is not lost, and
/// control characters are escaped.
class JsonObject {
public:
    JsonObject &text(std::string_view key, std::string_view value);
    JsonObject &number(std::string_view key, std::integral auto value) {
        return raw(key, std::to_string(value));
    }
    JsonObject &boolean(std::string_view key, bool value);
    JsonObject &null(std::string_view key);

    /// Adds an array.
    JsonObject &objects(std::string_view key, const std::vector<JsonObject> &values);

    // Add a text, or null for a null pointer or null text.
    JsonObject &textOrNull(std::string_view key, const char *value);
    JsonObject &textOrNull(std::string_view key, const QString &value);

    [[nodiscard]] std::string finished() const { return line_ + "}"; }

private:
    JsonObject &raw(std::string_view key, std::string_view json);
    void beginMember(std::string_view key);
    void appendText(std::string_view value);

    std::string line_ = "{";
};

} // namespace MWCore::mwfile
