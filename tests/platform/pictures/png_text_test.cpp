// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/PngText.h"

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

#include <QFile>

namespace {

using namespace MWCore;

/// Writes a PNG whose chunks the text in the first argument adds, to standard output.
constexpr const char *kWriter = R"(
import sys
from PIL import Image, PngImagePlugin
texts = PngImagePlugin.PngInfo()
exec(sys.argv[1])
Image.new('RGB', (1, 1)).save(sys.argv[2], pnginfo=texts)
)";

TEST(PngText, IsReadInEveryForm) {
    const TemporaryFolder folder;
    const std::string file = folder.at("a.png");
    const std::string longText(kLongestPngText, 'x');
    const struct {
        const char *chunks; ///< as Pillow adds them
        const char *text;   ///< null: none
    } rows[] = {
        {"texts.add_text('K', 'plain')", "plain"},
        {"texts.add_text('K', '')", ""},
        {"texts.add_text('K', 'packed', True)", "packed"},
        {"texts.add_itxt('K', 'plain', 'en', 'key')", "plain"},
        {"texts.add_itxt('K', 'packed', 'en', 'key', True)", "packed"},
        {"texts.add_text('KK', 'a'); texts.add_text('K', 'b'); texts.add_text('K', 'c')", "b"},
        {"texts.add_text('K', 'x' * 16384, True)", longText.c_str()},
        {"texts.add_text('K', 'x' * 16384)", longText.c_str()},
        {"texts.add_text('K', 'x' * 16385)", nullptr},
        {"texts.add_text('K', 'x' * 100_000_000, True)", nullptr},
        {"texts.add_text('k', 'a')", nullptr},
        {"texts.add(b'tEXt', b'K')", nullptr},
        {"texts.add(b'zTXt', b'K\\0')", nullptr},
        {"texts.add(b'zTXt', b'K\\0\\0damaged')", nullptr},
        {"texts.add(b'iTXt', b'K\\0\\0\\0en\\0key')", nullptr},
        {"", nullptr},
    };
    for (const auto &row : rows) {
        const ProcessResult written =
            runProcess({"/usr/bin/python3", "-c", kWriter, row.chunks, file});
        ASSERT_EQ(written.status, 0) << written.errorOutput;
        QFile png(QString::fromStdString(file));
        ASSERT_TRUE(png.open(QIODevice::ReadOnly));
        const auto text = pngText(png.readAll(), "K");
        EXPECT_EQ(text.value_or("none"), row.text ? row.text : "none") << row.chunks;
    }
}

} // namespace
