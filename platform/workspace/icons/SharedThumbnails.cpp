// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/SharedThumbnails.h"

#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/foundation/ShortMemo.h"
#include "platform/pictures/ImageScaling.h"
#include "platform/pictures/Png.h"
#include "platform/pictures/PngText.h"
#include "platform/workspace/icons/CanonicalUri.h"
#include "platform/workspace/icons/IconFiles.h"
#include "platform/workspace/icons/IconSources.h"
#include "platform/workspace/XdgFolders.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include <QPoint>
#include <QRect>
#include <QSize>

#include <sys/stat.h>

namespace MWCore {
namespace {

struct SizeRow {
    const char *folder;
    int pixels; ///< the longest side
};
constexpr SizeRow kSizeRows[] = {
    {"normal", 128},
    {"large", 256},
    {"x-large", 512},
    {"xx-large", 1024},
};
constexpr int64_t kLongestThumbnail = 8'388'608; // bytes; 1024 x 1024 pixels take half of it

/// Empty if there is none. Seen some milliseconds ago, so that the thousands of items of a folder
/// do not each look for it.
QByteArray thumbnailFolder() {
    using std::chrono::milliseconds;
    static auto *const memo = // never freed: threads outlive main()
        new ShortMemo<int, QByteArray>(milliseconds(2));
    return memo->value(0, [] {
        struct stat found = {};
        const QByteArray cache = userCacheFolder();
        const QByteArray folder = cache.isEmpty() ? cache : pathIn(cache, "thumbnails");
        return stat(folder.constData(), &found) == 0 ? folder : QByteArray();
    });
}

/// The thumbnails of one file, whether they exist or not.
class ThumbnailPaths {
public:
    ThumbnailPaths(QByteArray folder, const QByteArray &uri)
        : folder_(std::move(folder)), name_('/' + uriDigest(uri) + ".png") {}

    [[nodiscard]] QByteArray in(const SizeRow &size) const {
        return pathIn(folder_, size.folder) + name_;
    }

private:
    QByteArray folder_;
    QByteArray name_;
};

/// Those that are large enough, the smallest one first, then the others, the largest one first.
std::vector<SizeRow> byFitness(int pixels) {
    std::vector<SizeRow> sizes(std::begin(kSizeRows), std::end(kSizeRows));
    const auto firstLarge = std::ranges::lower_bound(sizes, pixels, {}, &SizeRow::pixels);
    const auto smaller = std::rotate(sizes.begin(), firstLarge, sizes.end());
    std::reverse(smaller, sizes.end());
    return sizes;
}

/// The picture in the file at @p path if it was made of the file @p uri as it was modified at
/// @p seconds, else null.
QImage freshImage(const QByteArray &path, const SizeRow &size, const QByteArray &uri,
                  int64_t seconds) {
    OSStatus status = noErr;
    const auto png = readRegularFile(path, kLongestThumbnail, FinalLink::Keep, &status);
    const QSize declared = png ? pngSize(*png).value_or(QSize()) : QSize();
    if (declared.isEmpty() || declared.width() > size.pixels || declared.height() > size.pixels)
        return {};
    const bool isFresh = pngText(*png, "Thumb::URI") == uri &&
                         pngText(*png, "Thumb::MTime") == QByteArray::number(qint64{seconds});
    return isFresh ? decodePng(*png, declared).value_or(QImage()) : QImage();
}

/// A thumbnail that does not fill its size is as small as the picture that it shows.
QImage inSquare(const QImage &image, const SizeRow &size, int pixels, int scale) {
    const QSize natural = image.size() * scale;
    const bool isSmall = std::max(image.width(), image.height()) < size.pixels &&
                         natural.width() < pixels && natural.height() < pixels;
    if (!isSmall)
        return fittedImage(image, pixels);
    const QPoint corner((pixels - natural.width()) / 2, (pixels - natural.height()) / 2);
    return drawnImage(image, {pixels, pixels}, QRect(corner, natural), NSImageInterpolationHigh);
}

} // namespace

void addThumbnail(const IconItem &item, IconRef &icon) {
    struct stat found = {};
    const QByteArray folder = thumbnailFolder();
    if (folder.isEmpty() || isAtOrBelow(item.path, folder))
        return;
    const ThumbnailPaths paths(folder, canonicalUri(item.path));
    bool isThere = false;
    for (const SizeRow &size : kSizeRows) {
        if (lstat(paths.in(size).constData(), &found) != 0)
            continue;
        isThere = true;
        addVersion(icon, versionOf(found));
    }
    if (!isThere || lstat(item.path.constData(), &found) != 0)
        return;
    icon.thumbnailOf = item.path;
    addVersion(icon, static_cast<uint64_t>(found.st_mtim.tv_sec));
}

QImage sharedThumbnail(const QByteArray &path, int pixels, int scale) {
    struct stat file = {};
    const QByteArray folder = thumbnailFolder();
    if (folder.isEmpty() || lstat(path.constData(), &file) != 0)
        return {};
    const QByteArray uri = canonicalUri(path);
    const ThumbnailPaths paths(folder, uri);
    for (const SizeRow &size : byFitness(pixels))
        if (const QImage image = freshImage(paths.in(size), size, uri, file.st_mtim.tv_sec);
            !image.isNull())
            return inSquare(image, size, pixels, scale);
    return {};
}

} // namespace MWCore
