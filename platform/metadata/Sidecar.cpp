// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/Sidecar.h"

#include "core/posix/stat_fields.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int64_t kHeadLength = 1024; ///< holds the longest table, and most of what is read

/// The entry @p id of a file that starts with @p head. nullopt with @p status unchanged if it has
/// none or is not a sidecar.
std::optional<AppleDouble::Entry> entryIn(QByteArrayView head, int64_t size, AppleDoubleId id,
                                          OSStatus *status) {
    if (!AppleDouble::hasMagic(head))
        return std::nullopt;
    const auto entries = AppleDouble::entriesOf(head, static_cast<uint64_t>(size));
    if (!entries) {
        *status = mapReadErr;
        return std::nullopt;
    }
    const auto entry = std::ranges::find(*entries, uint32_t(id), &AppleDouble::Entry::id);
    return entry == entries->end() ? std::nullopt : std::optional(*entry);
}

} // namespace

QByteArray sidecarName(const QByteArray &name) {
    const bool hasNone = name.isEmpty() || isDots(name) || isSidecarName(name);
    return hasNone ? QByteArray() : kSidecarPrefix.toByteArray() + name;
}

std::optional<QByteArray> OpenSidecar::read(int64_t offset, int64_t wanted,
                                            OSStatus *status) const {
    return offset + wanted <= head.size() ? head.sliced(offset, wanted)
                                          : readAt(file.number(), offset, wanted, status);
}

std::optional<OpenSidecar> openSidecar(const QByteArray &path, OSStatus *status) {
    const PathParts parts(path);
    const QByteArray name = sidecarName(parts.name);
    *status = noErr;
    if (name.isEmpty())
        return std::nullopt;
    Descriptor file = openRegularFile(parts.beside(name), FinalLink::Keep, status);
    struct stat item = {};
    if (file && fstat(file.number(), &item) != 0)
        *status = statusFromErrno(errno);
    if (!file || *status != noErr) {
        // An item has no sidecar if the sidecar's name is too long or is not that of a regular
        // file.
        if (*status == fnfErr || *status == bdNamErr || *status == errFSOperationNotSupported)
            *status = noErr;
        return std::nullopt;
    }
    auto head = readAt(file.number(), 0, kHeadLength, status);
    if (!head)
        return std::nullopt;
    return OpenSidecar{std::move(file), item.st_size,
                       int64_t(lengthOfBlocks(uint64_t(item.st_blocks))), std::move(*head)};
}

std::optional<OpenSidecarEntry> openSidecarEntry(const QByteArray &path, AppleDoubleId id,
                                                 OSStatus *status) {
    auto sidecar = openSidecar(path, status);
    const auto entry = sidecar ? entryIn(sidecar->head, sidecar->length, id, status) : std::nullopt;
    return entry ? std::optional(OpenSidecarEntry{std::move(*sidecar), *entry}) : std::nullopt;
}

std::optional<SidecarEntry> sidecarEntry(const OpenSidecar &sidecar, AppleDoubleId id,
                                         int64_t limit, OSStatus *status) {
    const auto entry = entryIn(sidecar.head, sidecar.length, id, status);
    if (!entry)
        return std::nullopt;
    const int64_t wanted = std::min<int64_t>(entry->length, limit);
    if (wanted > kLargestSidecar) {
        *status = fileBoundsErr; // a sparse file can have any length
        return std::nullopt;
    }
    auto beginning = sidecar.read(entry->offset, wanted, status);
    if (!beginning)
        return std::nullopt;
    return SidecarEntry{entry->length, sidecar.allocated, std::move(*beginning)};
}

std::optional<SidecarEntry> sidecarEntry(const QByteArray &path, AppleDoubleId id, int64_t limit,
                                         OSStatus *status) {
    const auto sidecar = openSidecar(path, status);
    return sidecar ? sidecarEntry(*sidecar, id, limit, status) : std::nullopt;
}

} // namespace MWCore
