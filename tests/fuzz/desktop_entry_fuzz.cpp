// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/DesktopEntry.h"
#include "tests/fuzz/fuzz.h"

#include <tuple>

using MWCore::DesktopEntry;

/// For any input: a value that is set is read back, and an existing value can be set again.
/// Removing a key that was new leaves the original bytes, perhaps followed by a line end or a
/// group.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    constexpr auto kMain = DesktopEntry::kMainGroup;
    constexpr qsizetype kItems = 8; // each costs a pass over the entry
    const QByteArray input = inputBytes(data, size);
    DesktopEntry entry(input);
    const auto before = entry.value(kMain, "Name");
    std::ignore = entry.localizedValue(kMain, "Name", "de_DE@euro");
    std::ignore = entry.boolean(kMain, "Hidden");
    for (const QString &item : entry.list(kMain, "Name").mid(0, kItems))
        if (entry.setValue(kMain, "X-Item", item))
            require(entry.value(kMain, "X-Item") == item);
    entry.removeKey(kMain, "X-Item");

    if (before && entry.setValue(kMain, "Name", *before))
        require(entry.value(kMain, "Name") == before);
    const QString value = QStringLiteral(" a;\\\n ");
    require(entry.setValue(kMain, "Name", value) && entry.value(kMain, "Name") == value);
    entry.removeKey(kMain, "Name");
    require(!entry.value(kMain, "Name"));
    if (!before && !input.contains("X-Item"))
        require(entry.toBytes().startsWith(input));
    return 0;
}
