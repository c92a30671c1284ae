// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/session/icons/CustomIconNames.h"

#include "core/posix/FolderStream.h"
#include "platform/files/CurrentMounts.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <optional>

#include <sys/stat.h>

#include <QHashFunctions>

namespace MWCore {
namespace {

constexpr qsizetype kMostBytes = 16'777'216; // of all files; most have some 10,000
constexpr qsizetype kLongestEnd = 12;        // bytes of a name that are hashed
constexpr std::size_t kBitsPerEnd = 48;      // of a name; most bits stay unset
constexpr std::size_t kFewestBits = 4096;

constexpr QByteArrayView kTreeMagic("\xda\x1ameta\x01\x00", 8);    // version 1.0
constexpr QByteArrayView kJournalMagic("\xda\x1ajour\x01\x00", 8); // version 1.0
constexpr QByteArrayView kAnyKey = "custom-icon";                  // also of "custom-icon-name"

/// Null at the end, with 0 in `errno`, and on failure.
const dirent *nextEntry(const FolderStream &folder) {
    if (!folder)
        return nullptr;
    errno = 0;
    return readdir(folder.get());
}

/// The paths of the files in @p folder, none if there is no such folder; nullopt on failure.
std::optional<std::vector<QByteArray>> filesIn(const QByteArray &folder) {
    std::vector<QByteArray> paths;
    const FolderStream stream(opendir(folder.constData()));
    for (const dirent *entry = nextEntry(stream); entry; entry = nextEntry(stream))
        if (entry->d_name[0] != '.') // GVfs writes new files under such names
            paths.push_back(pathIn(folder, entry->d_name));
    if (errno != 0 && errno != ENOENT)
        return std::nullopt;
    std::ranges::sort(paths);
    return paths;
}

std::optional<QByteArray> contentOf(const QByteArray &path) {
    OSStatus status = noErr;
    return readRegularFile(path, kMostBytes, FinalLink::Keep, &status);
}

/// Journals are written through a mapping, which may leave the times as they are, so the state has
/// their content; they have 32 KB. Other files are replaced.
QByteArray stateOf(const QByteArray &path) {
    struct stat file = {};
    if (lstat(path.constData(), &file) != 0)
        return {};
    const auto number = [](auto value) { return QByteArray::number(qlonglong(value)) + ' '; };
    QByteArray state = path + '\0' + number(file.st_ino) + number(file.st_size) +
                       number(file.st_mtim.tv_sec) + number(file.st_mtim.tv_nsec);
    if (path.endsWith(".log"))
        state += number(qHash(contentOf(path).value_or(QByteArray())));
    return state;
}

/// The metadata begins anew at each mount point, so it does not have the names of these.
QByteArray mountPointNames() {
    QByteArray names;
    const auto mounts = currentMounts();
    for (const Mount &mount : *mounts)
        names += PathParts(mount.mountPoint).name + '\0';
    return names;
}

QByteArray stateOfAll(const std::optional<std::vector<QByteArray>> &paths) {
    QByteArray state = mountPointNames();
    for (const QByteArray &path : paths.value_or(std::vector<QByteArray>()))
        state += stateOf(path);
    return state;
}

/// Calls @p use with each run of other bytes that ends with a null byte.
template <typename Use> void forEachText(QByteArrayView bytes, Use use) {
    for (qsizetype end = bytes.indexOf('\0'); end >= 0; end = bytes.indexOf('\0')) {
        if (end > 0)
            use(bytes.first(end));
        bytes = bytes.sliced(end + 1);
    }
}

bool isKnownFormat(const QByteArray &content) {
    return content.startsWith(kTreeMagic) || content.startsWith(kJournalMagic);
}

} // namespace

CustomIconNames::CustomIconNames(const QByteArray &folder) : folder_(folder) {
    const auto paths = filesIn(folder);
    state_ = stateOfAll(paths);
    includesAll_ = !paths;
    QByteArray bytes;
    for (const QByteArray &path : paths.value_or(std::vector<QByteArray>())) {
        const auto content = contentOf(path);
        includesAll_ = includesAll_ || !content || !isKnownFormat(*content);
        if (!includesAll_)
            bytes += *content + '\0';
        includesAll_ = includesAll_ || bytes.size() > kMostBytes;
    }
    if (!includesAll_ && bytes.contains(kAnyKey))
        addAll(bytes + mountPointNames());
}

bool CustomIconNames::isCurrent() const {
    return stateOfAll(filesIn(folder_)) == state_;
}

/// What looks like the beginning of a text may belong to the bytes before it, so only ends count.
void CustomIconNames::addAll(const QByteArray &bytes) {
    std::size_t count = 0;
    forEachText(bytes, [&count](QByteArrayView) { ++count; });
    ends_.resize(std::bit_ceil(std::max(kFewestBits, count * kBitsPerEnd)));
    forEachText(bytes, [this](QByteArrayView text) { add(text); });
}

std::size_t CustomIconNames::bitOf(QByteArrayView end) const {
    return qHash(end) & (ends_.size() - 1);
}

void CustomIconNames::add(QByteArrayView name) {
    for (qsizetype length = 1; length <= std::min(name.size(), kLongestEnd); ++length)
        ends_[bitOf(name.last(length))] = true;
}

bool CustomIconNames::mayInclude(QByteArrayView name) const {
    const auto isThere = [&] {
        return name.isEmpty() || ends_[bitOf(name.last(std::min(name.size(), kLongestEnd)))];
    };
    return includesAll_ || (!ends_.empty() && isThere());
}

} // namespace MWCore
