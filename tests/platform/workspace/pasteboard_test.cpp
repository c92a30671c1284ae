// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/Pasteboard.h"

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <thread>

#include <QClipboard>
#include <QEventLoop>
#include <QGuiApplication>

namespace {

using namespace MWCore;

const char *const kTypes[] = {"image/x-icns", "com.apple.icns",
                              "'icns' (CorePasteboardFlavorType 0x69636E73)"};

/// Bytes that no conversion of text preserves, more than one X request can hold.
std::string samples(const char *type) {
    std::string bytes = std::string("icns\0\xFF\r\n", 8) + type;
    for (uint32_t index = 0; index < 400'000; ++index)
        bytes += static_cast<char>(index * index >> 5);
    return bytes;
}

/// Processes events while another program runs.
ProcessResult peer(const std::vector<std::string> &command) {
    ProcessResult result;
    QEventLoop loop;
    std::thread other([&] {
        result = runProcess(command);
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    other.join();
    return result;
}

/// Lets another program offer the content of a file, until somebody else offers something. It stays
/// in the background for that.
void offerFromPeer(const char *type, const std::string &file) {
    QEventLoop loop;
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &loop,
                     &QEventLoop::quit);
    (void)runProcess(
        {"sh", "-c", R"(xclip -sel clipboard -t "$1" -i "$2" >/dev/null 2>&1)", "sh", type, file});
    loop.exec();
}

TEST(Pasteboard, ExchangesDataWithOtherPrograms) {
    const TemporaryFolder folder;
    const VirtualDisplay display;
    if (display.name().empty() || runProcess({"xclip", "-version"}).status != 0)
        GTEST_SKIP() << "needs Xvfb and xclip";
    const auto exchange = [&folder] {
        int count = 0;
        const QGuiApplication application(count, nullptr);
        for (const char *const type : kTypes) {
            const std::string bytes = samples(type);
            const std::string file = folder.write("sample", bytes);
            offerFromPeer(type, file);
            EXPECT_TRUE(Pasteboard::types().contains(type));
            EXPECT_TRUE(Pasteboard::data(type).value_or("nothing").toStdString() == bytes);
            EXPECT_FALSE(Pasteboard::data("image/x-other"));
        }
        std::vector<std::pair<QString, QByteArray>> contents;
        for (const char *const type : kTypes)
            contents.emplace_back(type, QByteArray::fromStdString(samples(type)));
        Pasteboard::set(contents);
        for (const char *const type : kTypes) {
            const auto taken = peer({"xclip", "-sel", "clipboard", "-t", type, "-o"});
            EXPECT_TRUE(taken.output == samples(type)) << taken.output.size();
            std::thread([type] { EXPECT_FALSE(Pasteboard::data(type)); }).join();
        }
        return ::testing::Test::HasFailure() ? 1 : 0;
    };
    setenv("DISPLAY", display.name().c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    EXPECT_EQ(runForked(exchange), 0);
}

TEST(Pasteboard, IsEmptyWithoutADisplay) {
    Pasteboard::set({{"image/x-icns", "icns"}});
    EXPECT_TRUE(Pasteboard::types().isEmpty());
    EXPECT_FALSE(Pasteboard::data("image/x-icns"));
}

} // namespace
