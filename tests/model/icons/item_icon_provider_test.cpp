// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/item/ItemIconProvider.h"

#include "platform/workspace/themes/IconTheme.h"
#include "tests/model/items.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/SlowMount.h"
#include "tests/support/UnresponsiveMount.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <list>
#include <memory>
#include <set>

#include <QColor>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <malloc.h>

/// LeakSanitizer stops all threads to search them, which those that wait for a file system prevent.
static bool areWorkersWaiting = false;
extern "C" int __lsan_is_turned_off();
int __lsan_is_turned_off() {
    return areWorkersWaiting ? 1 : 0;
}

namespace {

namespace fs = std::filesystem;
using namespace MWCore;
using Ptr = MXFileSystemObject::Ptr;
using Items = ItemIconProvider::Items;

constexpr int kPoints = 32;

/// A home folder with two themes: text files are red in "T" and blue in "U", folders black.
class ItemIconProviderTest : public ::testing::Test {
protected:
    ItemIconProviderTest() {
        for (const char *const variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            setenv(variable, folder_.path().c_str(), 1);
        setenv("XDG_DATA_DIRS", "/usr/share", 1); // with the MIME database
        setenv("XDG_CONFIG_DIRS", folder_.at("config").c_str(), 1);
        makeTheme("T", Qt::red);
        makeTheme("U", Qt::blue);
        IconTheme::setCurrentName("T");
        provider_ = newProvider();
    }
    ~ItemIconProviderTest() override { ItemIcon::setCacheLimit(limit_); }

    void makeTheme(const std::string &name, Qt::GlobalColor color) const {
        const std::string theme = "icons/" + name;
        (void)folder_.write(theme + "/index.theme",
                            "[Icon Theme]\nDirectories=32\n[32]\nSize=32\n");
        picture(theme + "/32/text-plain.png", color);
        picture(theme + "/32/folder.png", Qt::black);
    }

    void picture(const std::string &name, Qt::GlobalColor color) const {
        (void)folder_.write(name, "");
        QImage image(kPoints, kPoints, QImage::Format_ARGB32);
        image.fill(color);
        ASSERT_TRUE(image.save(text(folder_.at(name)), "PNG"));
    }

    std::unique_ptr<ItemIconProvider> newProvider() {
        auto provider = std::make_unique<ItemIconProvider>();
        provider->setImageSize(kPoints, 1);
        QObject::connect(provider.get(), &ItemIconProvider::imageChanged, provider.get(),
                         [this](const Ptr &item) { changed_.insert(item.data()); });
        return provider;
    }

    [[nodiscard]] Ptr file(const std::string &name) const {
        return MXFileSystemObject::newFSOForLocalItem(text(folder_.write("items/" + name, "x")));
    }
    [[nodiscard]] Items files(const std::string &prefix, int count) const {
        Items items;
        for (int i = 0; i < count; ++i)
            items += file(prefix + std::to_string(i) + ".txt");
        return items;
    }
    /// Files that the provider looks for at other places.
    [[nodiscard]] Items filesAt(const std::string &place, int count) const {
        Items items = files("f", count);
        for (int i = 0; i < count; ++i)
            items[i]->setCompletePath(text(place + "/" + std::to_string(i)));
        return items;
    }

    [[nodiscard]] static bool waitUntil(const std::function<bool()> &isDone) {
        const QDeadlineTimer deadline(std::chrono::seconds(20));
        QTimer end; // so that the loop also runs when nothing happens
        end.start(std::chrono::seconds(1));
        while (!isDone() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return isDone();
    }
    [[nodiscard]] bool haveChanged(const Items &items) const {
        return std::ranges::all_of(
            items, [this](const Ptr &item) { return changed_.contains(item.data()); });
    }
    [[nodiscard]] bool waitFor(const Items &items) const {
        return waitUntil([&] { return haveChanged(items); });
    }
    [[nodiscard]] QColor color(const Ptr &item) const {
        return provider_->image(*item).pixelColor(kPoints / 2, kPoints / 2);
    }

    TemporaryFolder folder_;
    int argumentCount_ = 0;
    QCoreApplication application_{argumentCount_, nullptr};
    int64_t limit_ = ItemIcon::cacheLimit();
    std::set<const MXFileSystemObject *> changed_;
    std::unique_ptr<ItemIconProvider> provider_;
};

// First, since threads do not survive a fork.
TEST_F(ItemIconProviderTest, NeitherWaitsForMountsThatNeverAnswerNorHangsAtTheEnd) {
    constexpr int kCannotMount = 77;
    constexpr int kSilentMounts = 20;
    const int status = runWithTimeout([this] {
        const MountedFolder place("tmpfs");
        std::list<UnresponsiveMount> silent;
        Items items;
        for (int count = 0; count < kSilentMounts; ++count) {
            const std::string name = std::to_string(count);
            fs::create_directory(place.at(name));
            if (!silent.emplace_back(place.at(name)).failureReason().empty())
                return kCannotMount;
            fs::create_directory_symlink(name, place.at("link" + name));
            items += filesAt(place.at(name), 5) + filesAt(place.at("link" + name), 5);
        }
        fs::create_directory(place.at("slow"));
        SlowMount slow(place.at("slow"));
        fs::create_directory_symlink("slow", place.at("link"));
        items += filesAt(place.at("link"), 1) + files("a", 20);
        provider_->setVisibleItems(items);
        const bool isServed = slow.nextName() == "0";
        slow.answer(); // what was read from it and not answered cannot be ended
        const bool isDone = waitFor(items.last(20)) && isServed;
        const bool hasPlaceholder = !provider_->image(*items[0]).isNull();
        provider_.reset();
        areWorkersWaiting = true;
        std::exit(isDone && hasPlaceholder ? 0 : 1); // with the workers still waiting
        return 1;
    });
    if (status == kCannotMount)
        GTEST_SKIP() << "cannot mount";
    EXPECT_EQ(status, 0);
}

// Before any other thread is started, which would not see what is mounted.
TEST_F(ItemIconProviderTest, WorksInOrderAndDropsWhatScrolledAway) {
    const MountedFolder place("tmpfs");
    if (!place.failureReason().empty())
        GTEST_SKIP() << place.failureReason();
    fs::create_directory(place.at("slow"));
    SlowMount slow(place.at("slow"));
    if (!slow.failureReason().empty())
        GTEST_SKIP() << slow.failureReason();
    const Items items = filesAt(place.at("slow"), 60);
    const Items local = files("local", 20);
    provider_->setVisibleItems(items.first(30) + local, items.sliced(30));
    std::set<std::string> begun = {slow.nextName(), slow.nextName()};
    EXPECT_EQ(begun.size(), 2U);
    for (const std::string &name : begun)
        EXPECT_LE(name, "4") << "out of order by more than the number of workers";
    EXPECT_TRUE(waitFor(local)) << "other file systems do not wait";
    EXPECT_FALSE(slow.hasNext(0)) << "two workers at most wait for one";

    provider_->setVisibleItems(items.last(10), {items[30]});
    std::vector<std::string> order;
    while (order.size() < 11) {
        slow.answer();
        const std::string name = slow.nextName();
        ASSERT_NE(name, "");
        if (begun.insert(name).second)
            order.push_back(name);
    }
    EXPECT_GE(std::ranges::find(order, "30") - order.begin(), 7) << "likely next, so it comes last";
    std::ranges::sort(order);
    EXPECT_EQ(order, (std::vector<std::string>{"30", "50", "51", "52", "53", "54", "55", "56", "57",
                                               "58", "59"}));
    provider_->setVisibleItems({});
    slow.answer();
}

TEST_F(ItemIconProviderTest, ShowsWhatTheItemsThemselvesWould) {
    (void)file("a.txt");
    fs::create_directory(folder_.at("items/folder"));
    (void)folder_.link("items/link", "a.txt");
    (void)folder_.link("items/folder link", "folder");
    (void)folder_.link("items/broken", "nowhere");
    (void)folder_.fifo("items/fifo");
    (void)folder_.write("items/alias.desktop", "[Desktop Entry]\nType=Link\nURL=file:///usr\n");
    (void)folder_.write("items/noextension", "text");
    const Ptr folder = itemAt(folder_.at("items"));
    Items items = folder->visibleItems();
    mfs_fso *const record = mfs_fso_new(MFS_TYPE_LINK, MFS_LOCATION_REMOTE, 755, nullptr, "far",
                                        nullptr, nullptr, 1, 0, nullptr, "/");
    items += MXFileSystemObject::newFSOWithCStruct(record);
    ASSERT_EQ(items.size(), 9);
    provider_->setVisibleItems(items.first(5), items.sliced(5));
    for (const Ptr &item : items) {
        EXPECT_EQ(provider_->image(*item).size(), QSize(kPoints, kPoints)) << "a placeholder";
    }
    EXPECT_TRUE(waitFor(items));
    for (const Ptr &item : items)
        EXPECT_EQ(provider_->image(*item), item->iconForFSOUsingCached(false)->image(kPoints))
            << item->name().toStdString();
    const Ptr gone = file("gone.txt");
    fs::remove(folder_.at("items/gone.txt"));
    EXPECT_EQ(color(gone), QColor(Qt::red)) << "as other files of this type";
    provider_->setVisibleItems({gone});
    EXPECT_TRUE(waitFor({gone}));
    EXPECT_EQ(provider_->image(*gone), iconForFile("/nothing")->image(kPoints));

    provider_->setImageSize(16, 2);
    for (const Ptr &item : items)
        EXPECT_EQ(provider_->image(*item).size(), QSize(32, 32));
    items.back().reset();
    items.clear();
    provider_->setVisibleItems({});
    mfs_fso_destroy_tree(record);
}

// Although the cache has no room for any image.
TEST_F(ItemIconProviderTest, DrawsALookOnceAndHoldsIt) {
    ItemIcon::setCacheLimit(0);
    Items items = files("a", 300);
    for (int i = 0; i < 50; ++i)
        items += MXFileSystemObject::newFSOForLocalItem(
            text(folder_.folder("items/" + std::to_string(i))));
    provider_->setVisibleItems(items);
    EXPECT_TRUE(waitFor(items));
    std::set<const uchar *> drawings;
    for (const Ptr &item : items) {
        EXPECT_EQ(color(item), QColor(item->isDir() ? Qt::black : Qt::red));
        drawings.insert(provider_->image(*item).constBits());
    }
    EXPECT_EQ(drawings.size(), 2U);
    provider_->setVisibleItems(items.sliced(100));
    provider_->setVisibleItems(items);
    EXPECT_EQ(color(items[0]), QColor(Qt::red)) << "still held for other items";
}

TEST_F(ItemIconProviderTest, FollowsTheThemeAndChangesOfItems) {
    const Ptr item = file("a.txt");
    const Ptr other = file("b.txt");
    provider_->setVisibleItems({item});
    ASSERT_TRUE(waitFor({item}));
    bool isThemeNew = false;
    QColor shown = color(item);
    QObject::connect(provider_.get(), &ItemIconProvider::allImagesChanged, provider_.get(), [&] {
        isThemeNew = true;
        EXPECT_EQ(color(item), shown) << "until the other is drawn";
    });
    changed_.clear();
    IconTheme::setCurrentName("U"); // while the provider is idle
    EXPECT_TRUE(waitFor({item}));
    EXPECT_TRUE(std::exchange(isThemeNew, false));
    shown = color(item);
    EXPECT_EQ(shown, QColor(Qt::blue));
    EXPECT_EQ(color(other), QColor(Qt::blue)) << "as other files of this type";

    (void)folder_.write("icons/U/new/icon.png", "");
    provider_->checkTheme();
    EXPECT_TRUE(waitUntil([&] { return isThemeNew; }));

    changed_.clear();
    fs::remove(folder_.at("items/a.txt"));
    fs::create_directory(folder_.at("items/a.txt"));
    provider_->forget(*item);
    EXPECT_EQ(color(item), QColor(Qt::blue)) << "until the other is drawn";
    EXPECT_TRUE(waitFor({item}));
    EXPECT_EQ(color(item), QColor(Qt::black));
}

TEST_F(ItemIconProviderTest, MayGoAtAnyTime) {
    const Items items = files("a", 40);
    for (int i = 0; i < 50; ++i)
        newProvider()->setVisibleItems(items); // while workers are busy
    QObject::connect(provider_.get(), &ItemIconProvider::imageChanged, provider_.get(),
                     [this] { provider_.reset(); });
    provider_->setVisibleItems(items);
    EXPECT_TRUE(waitUntil([this] { return !provider_; }));
    QCoreApplication::processEvents();
}

// 5,000 items, each with a look of its own.
TEST_F(ItemIconProviderTest, NeedsMemoryOnlyForWhatIsVisible) {
    constexpr int kPages = 25;
    constexpr int kOnPage = 200;
    constexpr int kWarmUp = 10; // pages that fill the cache
    constexpr std::size_t kLittle = 1 << 20;
    std::size_t used = 0;
    for (int page = 0; page < kPages; ++page) {
        Items items;
        for (int i = 0; i < kOnPage; ++i) {
            const std::string name = std::to_string(page * kOnPage + i);
            items += MXFileSystemObject::newFSOForLocalItem(
                text(folder_.write("entries/" + std::to_string(i) + ".desktop",
                                   "[Desktop Entry]\nType=Application\nIcon=i" + name + "\n")));
        }
        changed_.clear();
        provider_->setVisibleItems(items);
        ASSERT_TRUE(waitFor(items)) << page;
        if (page == kWarmUp)
            used = mallinfo2().uordblks + mallinfo2().hblkhd;
    }
    EXPECT_LT(mallinfo2().uordblks + mallinfo2().hblkhd, used + kLittle);
}

} // namespace
