// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <QString>

namespace MWCore::mwfile {

/// One JSON object on one line (RFC 8259), built member by member in order. Texts may be any
/// bytes: what is no UTF-8 is written as the lone surrogate \udcNN, so that nothing is lost, and
/// control characters are escaped.
class JsonObject {
public:
    JsonObject &text(std::string_view key, std::string_view value);
    JsonObject &number(std::string_view key, int64_t value);
    JsonObject &truth(std::string_view key, bool value);
    JsonObject &null(std::string_view key);

    // A text; null for a null pointer and for a null text.
    JsonObject &textOrNull(std::string_view key, const char *value);
    JsonObject &textOrNull(std::string_view key, const QString &value);

    [[nodiscard]] std::string finished() const { return line_ + "}"; }

private:
    void beginMember(std::string_view key);
    void appendText(std::string_view value);

    std::string line_ = "{";
};

} // namespace MWCore::mwfile
