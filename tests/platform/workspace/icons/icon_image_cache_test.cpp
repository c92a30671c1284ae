// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconImageCache.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <barrier>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace MWCore;

constexpr int kPixels = 32;
constexpr int64_t kBytes = kPixels * kPixels * 4;

IconImageKey key(std::size_t look) {
    return {std::make_shared<IconRef>(), look, IconBadge::None, kPixels, kPixels, 1, {}};
}
QImage square() {
    return {kPixels, kPixels, QImage::Format_ARGB32_Premultiplied};
}

TEST(IconImageCache, DrawsAnImageOnceForAllThreads) {
    IconImageCache cache;
    cache.setLimit(0); // so that only holding keeps an image
    constexpr std::size_t kLooks = 20;
    constexpr int kThreads = 6;
    std::array<std::atomic<int>, kLooks> drawn = {};
    std::barrier together(kThreads);
    const auto work = [&] {
        for (std::size_t look = 0; look < kLooks; ++look) {
            together.arrive_and_wait();
            const HeldIconImage image = cache.hold(key(look), [&] {
                for (int turn = 0; turn < 100; ++turn)
                    std::this_thread::yield(); // to let the others ask, too
                ++drawn.at(look);
                return square();
            });
            together.arrive_and_wait();
            EXPECT_TRUE(image && cache.find(key(look)).constBits() == image->constBits());
        }
    };
    {
        std::array<std::jthread, kThreads> threads;
        for (std::jthread &thread : threads)
            thread = std::jthread(work);
    }
    for (std::size_t look = 0; look < kLooks; ++look) {
        EXPECT_EQ(drawn.at(look), 1) << look;
        EXPECT_TRUE(cache.find(key(look)).isNull()) << "nobody holds it";
    }
}

TEST(IconImageCache, DropsWhatWasUsedLeastRecentlyUnlessItIsHeld) {
    IconImageCache cache;
    cache.setLimit(2 * kBytes);
    const auto isHere = [&cache](std::size_t look) { return !cache.find(key(look)).isNull(); };
    HeldIconImage held = cache.hold(key(0), square);
    for (std::size_t look = 1; look < 4; ++look)
        (void)cache.findOrDraw(key(look), square);
    EXPECT_TRUE(isHere(0) && !isHere(1) && isHere(2) && isHere(3));
    (void)cache.find(key(2));
    held.reset(); // as if it was used now
    EXPECT_TRUE(isHere(0) && isHere(2) && !isHere(3));
    EXPECT_EQ(cache.hold(key(9)), nullptr);
    EXPECT_EQ(cache.hold(key(9), [] { return QImage(); }), nullptr);
    EXPECT_FALSE(isHere(9));
}

TEST(IconImageCache, KeepsNeitherAThemeNorItsImagesOnceItIsReplaced) {
    IconImageCache cache;
    auto theme = std::make_shared<const IconTheme>("T", std::vector<QByteArray>());
    const std::weak_ptr<const IconTheme> replaced = theme;
    IconImageKey used = key(1);
    IconImageKey shown = key(2);
    used.theme = shown.theme = ThemeTag(theme);
    EXPECT_FALSE(cache.findOrDraw(used, square).isNull());
    HeldIconImage held = cache.hold(shown, square);
    theme.reset();
    EXPECT_TRUE(replaced.expired());
    EXPECT_FALSE(cache.find(shown).isNull()) << "held";
    held.reset();
    EXPECT_TRUE(cache.find(shown).isNull());
    (void)cache.findOrDraw(key(3), square);
    EXPECT_TRUE(cache.find(used).isNull());
}

} // namespace
