// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/Sidecar.h"

#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/files/ReplacedFile.h"

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int64_t kHeadLength = 512; ///< holds everything but the fork of a usual one
constexpr int64_t kLongestTable = 16384;

/// The file's entries; nothing with noErr when it is no sidecar at all.
std::optional<std::vector<AppleDouble::Entry>> entriesOf(int descriptor, int64_t size,
                                                         OSStatus *status) {
    for (const int64_t length : {kHeadLength, kLongestTable}) {
        const auto head = readAt(descriptor, 0, length, status);
        if (!head || !AppleDouble::hasMagic(*head))
            return std::nullopt;
        if (auto entries = AppleDouble::entriesOf(*head, static_cast<uint64_t>(size)))
            return entries;
    }
    *status = mapReadErr;
    return std::nullopt;
}

/// What stands there, or a fresh one. Nothing for what must not be overwritten.
std::optional<AppleDouble> currentSidecar(const ReplacedFile &file, OSStatus *status) {
    if (!file.isThere())
        return AppleDouble::fresh();
    const auto bytes = file.content(kLargestSidecar, status);
    auto sidecar = bytes ? AppleDouble::parse(*bytes) : std::nullopt;
    if (bytes && !sidecar)
        *status = mapReadErr;
    return sidecar;
}

/// A new sidecar belongs to the owner of its item, may be read and written as the item, and is no
/// program.
ReplacedFile::Fresh freshFor(const QByteArray &path) {
    struct stat item = {};
    constexpr mode_t kReadAndWrite = 0666;
    if (lstat(path.constData(), &item) != 0)
        return {S_IRUSR | S_IWUSR};
    return {(item.st_mode & kReadAndWrite) | S_IRUSR | S_IWUSR, item.st_uid, item.st_gid};
}

} // namespace

QByteArray sidecarPath(const QByteArray &path) {
    const PathParts parts(path);
    if (parts.name.isEmpty() || parts.name == "." || parts.name == ".." ||
        parts.name.startsWith("._"))
        return {};
    return parts.beside("._" + parts.name);
}

std::optional<SidecarEntry> sidecarEntry(const QByteArray &path, AppleDoubleId id, int64_t limit,
                                         OSStatus *status) {
    const QByteArray sidecar = sidecarPath(path);
    *status = noErr;
    if (sidecar.isEmpty())
        return std::nullopt;
    const Descriptor file = openRegularFile(sidecar, Links::Keep, status);
    struct stat item = {};
    if (file && fstat(file.number(), &item) != 0)
        *status = statusFromErrno(errno);
    if (!file || *status != noErr) {
        // A name too long for a sidecar has none, nor has what is no plain file.
        if (*status == fnfErr || *status == bdNamErr || *status == errFSOperationNotSupported)
            *status = noErr;
        return std::nullopt;
    }
    const auto entries = entriesOf(file.number(), item.st_size, status);
    if (!entries)
        return std::nullopt;
    const auto entry = std::ranges::find(*entries, uint32_t(id), &AppleDouble::Entry::id);
    if (entry == entries->end())
        return std::nullopt;
    const int64_t wanted = std::min<int64_t>(entry->length, limit);
    if (wanted > kLargestSidecar) {
        *status = fileBoundsErr; // a file with holes is as long as it likes
        return std::nullopt;
    }
    auto beginning = readAt(file.number(), entry->offset, wanted, status);
    if (!beginning)
        return std::nullopt;
    return SidecarEntry{entry->length, int64_t(item.st_blocks) * 512, std::move(*beginning)};
}

OSStatus changeSidecar(const QByteArray &path, const std::function<void(AppleDouble &)> &change) {
    const QByteArray sidecarFile = sidecarPath(path);
    if (sidecarFile.isEmpty())
        return errFSOperationNotSupported;
    OSStatus status = noErr;
    auto file = ReplacedFile::begin(sidecarFile, freshFor(path), &status);
    if (!file)
        return status;
    auto sidecar = currentSidecar(*file, &status);
    if (!sidecar)
        return status;
    change(*sidecar);
    if (sidecar->bytes().size() > kLargestSidecar)
        return fileBoundsErr; // nobody could read or change it again
    return sidecar->isVoid() ? file->commitRemoval() : file->commit(sidecar->bytes());
}

} // namespace MWCore
