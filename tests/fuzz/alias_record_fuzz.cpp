// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/FileUrl.h"
#include "platform/files/MountTable.h"
#include "platform/formats/AliasRecord.h"
#include "tests/fuzz/fuzz.h"

using namespace MWCore;

/// Alias records, file URLs and the mount table: a parsed record or URL that is written and parsed
/// again must be the same.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    const QByteArray input = inputBytes(data, size);
    if (const auto record = AliasRecord::parse(input)) {
        const auto again = AliasRecord::parse(record->toBytes());
        require(again && again->toBytes() == record->toBytes());
        require(again->identity == record->identity && again->path == record->path);
    }
    if (const auto path = pathOfFileUrl(input))
        require(pathOfFileUrl(fileUrl(*path)) == path);
    for (const Mount &mount : parseMountTable(input))
        require(mount.mountPoint.size() <= input.size());
    return 0;
}
