// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconBadges.h"

#include "platform/foundation/FrameworkResources.h"
#include "platform/pictures/ImageScaling.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

namespace MWCore {
namespace {

/// Reads one page of a TIFF file. Qt's plug-in finds a page only if the device is at its start, so
/// each page needs a reader of its own.
class PageReader {
public:
    PageReader(QByteArray &file, int page) : buffer_(&file), reader_(&buffer_, "tiff") {
        reader_.jumpToImage(page);
    }

    QImageReader *operator->() { return &reader_; }

private:
    QBuffer buffer_;
    QImageReader reader_;
};

/// A badge in several sizes: the pages of its file. Each is decoded when it is first needed. Any
/// thread.
class BadgePages {
public:
    explicit BadgePages(const char *name);

    /// The badge for an icon @p width pixels wide. Null if there is none.
    QImage image(int width) { return fittedImage(page(width), width); }

private:
    /// The smallest page that is at least @p width pixels wide, else the largest one.
    QImage page(int width);

    struct Page {
        int number;
        int width;
        QImage image; ///< null until it is needed
    };

    QByteArray file_;
    std::vector<Page> pages_; ///< the smallest one first
    std::mutex mutex_;        ///< protects their images
};

BadgePages::BadgePages(const char *name)
    : file_(FrameworkResources::data(QString::fromLatin1(name), "tiff").value_or(QByteArray())) {
    const int count = PageReader(file_, 0)->imageCount();
    for (int number = 0; number < count; ++number)
        pages_.push_back({number, PageReader(file_, number)->size().width(), {}});
    std::ranges::sort(pages_, {}, &Page::width);
}

QImage BadgePages::page(int width) {
    if (pages_.empty())
        return {};
    const auto larger = std::ranges::lower_bound(pages_, width, {}, &Page::width);
    Page &page = larger == pages_.end() ? pages_.back() : *larger;
    const std::lock_guard lock(mutex_);
    if (page.image.isNull())
        page.image = PageReader(file_, page.number)->read();
    return page.image;
}

BadgePages &pagesOf(IconBadge badge) {
    static auto *const alias = new BadgePages("AliasBadge");
    static auto *const locked = new BadgePages("LockedBadge");
    return badge == IconBadge::Alias ? *alias : *locked;
}

} // namespace

void drawBadge(QImage &image, IconBadge badge) {
    if (badge == IconBadge::None)
        return;
    const QImage drawn = pagesOf(badge).image(image.width());
    QPainter painter(&image);
    painter.drawImage(QRect(0, 0, image.width(), image.height()), drawn);
}

} // namespace MWCore
