// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "JsonObject.h"

#include "TextBytes.h"
#include "TextReader.h"

#include <cstdio>

namespace MWCore::mwfile {
namespace {

/// Start of the lone surrogates that represent invalid bytes.
constexpr char32_t kInvalidByteBase = 0xDC00;

std::string unicodeEscape(char32_t unit) {
    char text[16];
    std::snprintf(text, sizeof text, "\\u%04x", static_cast<unsigned>(unit));
    return text;
}

} // namespace

JsonObject &JsonObject::text(std::string_view key, std::string_view value) {
    beginMember(key);
    appendText(value);
    return *this;
}

JsonObject &JsonObject::boolean(std::string_view key, bool value) {
    return raw(key, value ? "true" : "false");
}

JsonObject &JsonObject::null(std::string_view key) {
    return raw(key, "null");
}

JsonObject &JsonObject::objects(std::string_view key, const std::vector<JsonObject> &values) {
    std::string array;
    for (const JsonObject &value : values)
        array.append(array.empty() ? "" : ", ").append(value.finished());
    return raw(key, "[" + array + "]");
}

JsonObject &JsonObject::raw(std::string_view key, std::string_view json) {
    beginMember(key);
    line_ += json;
    return *this;
}

JsonObject &JsonObject::textOrNull(std::string_view key, const char *value) {
    return value ? text(key, value) : null(key);
}

JsonObject &JsonObject::textOrNull(std::string_view key, const QString &value) {
    return value.isNull() ? null(key) : text(key, bytesOf(value));
}

void JsonObject::beginMember(std::string_view key) {
    if (line_.size() > 1)
        line_ += ", ";
    appendText(key);
    line_ += ": ";
}

void JsonObject::appendText(std::string_view value) {
    line_ += '"';
    TextReader reader(value);
    while (const auto step = reader.next()) {
        if (!step->valid)
            line_ += unicodeEscape(kInvalidByteBase + step->character);
        else if (isControl(step->character))
            line_ += unicodeEscape(step->character);
        else if (step->character == U'"' || step->character == U'\\')
            (line_ += '\\') += step->bytes;
        else
            line_ += step->bytes;
    }
    line_ += '"';
}

} // namespace MWCore::mwfile
