// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/FileUrl.h"
#include "platform/files/MountTable.h"
#include "platform/formats/AliasRecord.h"
#include "tests/fuzz/fuzz.h"

using namespace MWCore;

/// Records, the addresses beside them and the table of mounts: what is read once is read again from
/// what was written of it.
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
