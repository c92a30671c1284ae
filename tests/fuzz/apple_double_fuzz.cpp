// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/AppleDouble.h"
#include "tests/fuzz/fuzz.h"

#include <map>

using namespace MWCore;

namespace {

/// The first content of each id, except for @p changing.
std::map<uint32_t, QByteArray> contentsBut(const AppleDouble &file, uint32_t changing) {
    std::map<uint32_t, QByteArray> contents;
    const auto size = static_cast<uint64_t>(file.bytes().size());
    const auto entries = AppleDouble::entriesOf(file.bytes(), size);
    require(entries.has_value());
    for (const AppleDouble::Entry &entry : *entries)
        if (entry.id != changing)
            contents.emplace(entry.id, file.content(entry.id).toByteArray());
    return contents;
}

/// Replaces a content and checks that it is read back and that all others are unchanged. A new
/// entry moves an attribute block, whose offsets count from the start of the file and so may
/// change.
void replaceAndCheck(AppleDouble &file, AppleDoubleId id, const QByteArray &content) {
    auto before = contentsBut(file, id);
    const bool isNew = file.content(id).isNull();
    file.replace(id, content);
    const auto again = AppleDouble::parse(file.bytes());
    require(again && again->content(id) == content);
    auto after = contentsBut(*again, id);
    if (isNew)
        for (auto *const contents : {&before, &after})
            if (const auto info = contents->find(kFinderInfoEntry); info != contents->end())
                info->second.truncate(32);
    require(before == after);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    auto file = AppleDouble::parse(inputBytes(data, size));
    if (!file)
        return 0;
    require(file->bytes() == inputBytes(data, size));
    (void)file->isEmpty();
    const auto longer = AppleDouble::parse(file->bytes() + 'x');
    require(longer && !longer->isEmpty());
    file->overwrite(kFinderInfoEntry, QByteArray(32, 'i'));
    require(file->content(kFinderInfoEntry).startsWith(QByteArray(32, 'i')));
    for (const qsizetype length : {70, 3, 0, 200, 200})
        replaceAndCheck(*file, kResourceForkEntry, QByteArray(length, 'f'));
    replaceAndCheck(*file, kFinderInfoEntry, QByteArray(40, 'j'));
    return 0;
}
