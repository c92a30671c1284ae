// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"
#include "icons/IconFamilyReport.h"
#include "platform/foundation/FrameworkResources.h"
#include "platform/pictures/ImageScaling.h"
#include "platform/workspace/icons/IconBadges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include <QBuffer>
#include <QImage>
#include <QImageReader>

namespace MWCore {
namespace {

/// The pages of a picture, which is in the format that its type says.
std::vector<QImage> pagesOf(const char *name, const char *type) {
    QByteArray bytes = FrameworkResources::data(name, type).value_or(QByteArray());
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, qstrcmp(type, "tif") == 0 ? "tiff" : type);
    std::vector<QImage> pages;
    do {
        pages.push_back(reader.read().convertToFormat(QImage::Format_ARGB32));
        buffer.seek(0); // where Qt's TIFF plug-in looks for the next page
    } while (reader.jumpToNextImage());
    return pages;
}

int alphaAt(const QImage &image, int x, int y) {
    return qAlpha(image.pixel(x, y));
}

bool hasTransparentCorner(const QImage &image) {
    const int right = image.width() - 1;
    const int bottom = image.height() - 1;
    return alphaAt(image, 0, 0) == 0 || alphaAt(image, right, bottom) == 0;
}

/// The part of an image that is not entirely transparent.
QRect visiblePart(const QImage &image) {
    QRect part;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (alphaAt(image, x, y) > 0)
                part |= QRect(x, y, 1, 1);
    return part;
}

/// How much smoke an image shows, where and how widely it is spread, in pixels.
struct Smoke {
    explicit Smoke(const QImage &image) {
        double squares = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const double alpha = alphaAt(image, x, y);
                amount += alpha;
                centre += alpha * QPointF(x, y);
                squares += alpha * (x * x + y * y);
            }
        centre /= amount;
        spread = std::sqrt(squares / amount - QPointF::dotProduct(centre, centre));
    }

    double amount = 0;
    QPointF centre;
    double spread = 0;
};

TEST(Pictures, HaveTheirSizes) {
    const QSize smoke(42, 52);
    const QSize arrow(8, 6);
    const auto square = [](int width) { return QSize(width, width); };
    std::vector<QSize> badge;
    for (const int width : {128, 16, 24, 32, 48, 64, 96, 192, 256, 384, 512})
        badge.push_back(square(width));
    const struct Row {
        const char *name;
        const char *type;
        std::vector<QSize> sizes; ///< of the pages, in pixels
    } rows[] = {
        {"AliasBadge", "tiff", badge},
        {"LockedBadge", "tiff", badge},
        {"poof1", "tif", {smoke, 2 * smoke, 3 * smoke}},
        {"poof2", "tif", {smoke, 2 * smoke, 3 * smoke}},
        {"poof3", "tif", {smoke, 2 * smoke, 3 * smoke}},
        {"poof4", "tif", {smoke, 2 * smoke, 3 * smoke}},
        {"poof5", "tif", {smoke, 2 * smoke, 3 * smoke}},
        {"pulldown_arrow_small", "tiff", {arrow, 2 * arrow, 3 * arrow}},
        {"nopreview", "png", {square(128)}},
        {"nopreview@2x", "png", {square(256)}},
    };
    for (const Row &row : rows) {
        std::vector<QSize> sizes;
        for (const QImage &page : pagesOf(row.name, row.type)) {
            sizes.push_back(page.size());
            EXPECT_TRUE(!page.isNull() && hasTransparentCorner(page)) << row.name;
            EXPECT_FALSE(visiblePart(page).isEmpty()) << row.name;
        }
        EXPECT_EQ(sizes, row.sizes) << row.name;
    }
}

TEST(Pictures, DefaultToolbarIconHasAllSizes) {
    const QByteArray bytes = FrameworkResources::data("defaultspecial", "icns").value_or("");
    const IconFamilyReport report = examineIconFamily(bytes);
    EXPECT_TRUE(report.isValid());
    const auto family = IconFamily::initWithData(bytes);
    std::set<int> widths;
    for (const IconElementReport &element : report.elements)
        if (const QImage image = family->imageOfElement(element.type); !image.isNull()) {
            EXPECT_TRUE(hasTransparentCorner(image)) << element.type;
            EXPECT_EQ(alphaAt(image, image.width() / 2, image.height() / 4), 255) << element.type;
            widths.insert(image.width());
        }
    EXPECT_EQ(widths, (std::set{16, 32, 48, 64, 128, 256, 512, 1024}));
}

TEST(Pictures, BadgesStayInTheirCornerAndAreLargerOnSmallIcons) {
    for (const char *const name : {"AliasBadge", "LockedBadge"}) {
        std::vector<QImage> pages = pagesOf(name, "tiff");
        std::ranges::sort(pages, {}, &QImage::width);
        double former = 1;
        for (const QImage &page : pages) {
            const std::string what = std::string(name) + ' ' + std::to_string(page.width());
            const QRect badge = visiblePart(page);
            EXPECT_EQ(badge.width(), badge.height()) << what;
            EXPECT_GT(badge.left(), page.width() / 3) << what;
            EXPECT_GE(badge.right(), page.width() * 15 / 16) << what;
            EXPECT_EQ(badge.right(), badge.bottom()) << what;
            // A rim that were not aligned to whole pixels would be transparent in part.
            EXPECT_EQ(alphaAt(page, badge.left(), badge.center().y()), 255) << what;
            EXPECT_EQ(alphaAt(page, badge.center().x(), badge.bottom()), 255) << what;
            const double share = 1.0 * badge.width() / page.width();
            EXPECT_LE(share, former) << what;
            former = share;
        }
    }
}

TEST(Pictures, IconsGetThePageOfTheirSizeOrTheNextLargerOne) {
    for (const QImage &page : pagesOf("LockedBadge", "tiff"))
        for (const int width : {page.width(), page.width() - 1}) {
            QImage icon(width, width, QImage::Format_ARGB32_Premultiplied);
            icon.fill(Qt::transparent);
            drawBadge(icon, IconBadge::Locked);
            const QRect expected = visiblePart(fittedImage(page, width));
            EXPECT_EQ(visiblePart(icon), expected) << width;
        }
}

TEST(Pictures, SmokeFadesSpreadsAndRises) {
    const auto first = pagesOf("poof1", "tif");
    std::vector<Smoke> before(first.begin(), first.end());
    for (const char *const name : {"poof2", "poof3", "poof4", "poof5"}) {
        const auto pages = pagesOf(name, "tif");
        const std::vector<Smoke> after(pages.begin(), pages.end());
        for (std::size_t page = 0; page < pages.size(); ++page) {
            EXPECT_LT(after[page].amount, before[page].amount) << name;
            EXPECT_GT(after[page].spread, before[page].spread) << name;
            EXPECT_LT(after[page].centre.y(), before[page].centre.y()) << name;
            // At every density, the same smoke is in the same place.
            const double scale = 1.0 + static_cast<double>(page);
            EXPECT_NEAR(after[page].amount / (scale * scale), after[0].amount,
                        after[0].amount / 100);
            EXPECT_NEAR(after[page].spread / scale, after[0].spread, 0.2);
        }
        before = after;
    }
    const QImage last = pagesOf("poof5", "tif").front();
    EXPECT_EQ(alphaAt(last, last.width() / 2, last.height() / 2), 0) << "the ring is open";
}

} // namespace
} // namespace MWCore
