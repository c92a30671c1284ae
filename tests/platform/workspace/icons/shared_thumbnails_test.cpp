// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Thumbnails that GIO finds, written by GdkPixbuf.
#include "tests/platform/workspace/icons/IconHome.h"
#include "tests/support/Process.h"

#include <chrono>
#include <functional>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;
using namespace std::chrono_literals;

/// Writes a thumbnail of each file in a folder, and checks that GIO finds it.
/// Arguments: the folder, a size, its pixels, a colour, MTime relative to the file, a URI or "".
constexpr const char *kWriter = R"(
import hashlib, os, sys
import gi
gi.require_version('GdkPixbuf', '2.0')
from gi.repository import GdkPixbuf, Gio, GLib
folder, size, pixels, color, later, other = [os.fsencode(text) for text in sys.argv[1:]]
target = os.path.join(os.environb[b'XDG_CACHE_HOME'], b'thumbnails', size)
os.makedirs(target, exist_ok=True)
picture = GdkPixbuf.Pixbuf.new(GdkPixbuf.Colorspace.RGB, True, 8, int(pixels), int(pixels))
picture.fill(int(color, 16))
for name in os.listdir(folder):
    path = os.path.join(folder, name)
    uri = GLib.filename_to_uri(path, None)
    thumbnail = os.path.join(target, hashlib.md5(uri.encode()).hexdigest().encode() + b'.png')
    time = int(os.stat(path).st_mtime) + int(later)
    keys = ['tEXt::Thumb::URI', 'tEXt::Thumb::MTime']
    picture.savev(os.fsdecode(thumbnail), 'png', keys, [other.decode() or uri, str(time)])
    seen = Gio.File.new_for_uri(uri).query_info('thumbnail::*', 0, None)
    found = seen.get_attribute_as_string('thumbnail::path')
    if found is None or not seen.get_attribute_boolean('thumbnail::is-valid'):
        print('GIO does not use', path, found)
)";

class SharedThumbnails : public IconHome {
protected:
    SharedThumbnails() {
        themeIcon("unknown", Qt::gray);
        themeIcon("text-x-generic", Qt::gray);
    }

    struct Thumbnail {
        const char *size = "normal";
        int pixels = 128;
        const char *color = "ff0000ff"; ///< red, green, blue, alpha
        int later = 0;
        const char *uri = "";
    };
    [[nodiscard]] ProcessResult write(const std::string &folder, const Thumbnail &made) const {
        return runProcess({"/usr/bin/python3", "-c", kWriter, folder, made.size,
                           std::to_string(made.pixels), made.color, std::to_string(made.later),
                           made.uri});
    }
    [[nodiscard]] static bool isInstalled() {
        return runProcess({"/usr/bin/python3", "-c", "from gi.repository import GdkPixbuf"})
                   .status == 0;
    }
};

TEST_F(SharedThumbnails, AreFoundWhateverAFileIsCalled) {
    if (!isInstalled())
        GTEST_SKIP() << "python3-gi and gir1.2-gdkpixbuf-2.0 are not installed";
    std::string low = "a";
    std::string high = "b";
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '/')
            (byte < 128 ? low : high) += static_cast<char>(byte);
    for (const std::string &name : {low, high, std::string("plain.txt"), std::string("ä ö#?%41;")})
        (void)home_.write("files/" + name, "");
    const ProcessResult written = write(home_.at("files"), {});
    ASSERT_EQ(written.status, 0) << written.errorOutput;
    ASSERT_EQ(written.output, "");
    for (const auto &file : fs::directory_iterator(home_.at("files"))) {
        EXPECT_EQ(drawn(file.path()), "#ff0000") << file.path();
        EXPECT_EQ(drawn(home_.at("files/./../files//") + file.path().filename().string()),
                  "#ff0000");
    }
    EXPECT_EQ(drawn(home_.link("link", "files/plain.txt")), "#ff0000");
    ASSERT_EQ(write(home_.at("thumbnails/normal"), {"large", 256, "ff0000ff", 0, ""}).status, 0);
    for (const auto &file : fs::directory_iterator(home_.at("thumbnails/normal")))
        EXPECT_EQ(description(file.path()).thumbnailOf, "") << "of a thumbnail";
}

TEST_F(SharedThumbnails, AreAsLargeAsTheIcon) {
    if (!isInstalled())
        GTEST_SKIP() << "python3-gi and gir1.2-gdkpixbuf-2.0 are not installed";
    const std::string file = home_.write("files/a.txt", "");
    for (const Thumbnail &made :
         {Thumbnail{"normal", 128, "ff0000ff", 0, ""}, Thumbnail{"large", 256, "00ff00ff", 0, ""},
          Thumbnail{"x-large", 512, "0000ffff", 0, ""},
          Thumbnail{"xx-large", 1024, "ffff00ff", 0, ""}})
        ASSERT_EQ(write(home_.at("files"), made).status, 0);
    const struct {
        int pixels;
        const char *color;
    } rows[] = {{16, "#ff0000"},  {128, "#ff0000"}, {129, "#00ff00"},  {256, "#00ff00"},
                {300, "#0000ff"}, {513, "#ffff00"}, {1024, "#ffff00"}, {2000, "#ffff00"}};
    for (const auto &row : rows)
        EXPECT_EQ(drawn(file, row.pixels), row.color) << row.pixels;
    fs::remove_all(home_.at("thumbnails/xx-large"));
    fs::remove_all(home_.at("thumbnails/normal"));
    EXPECT_EQ(drawn(file, 2000), "#0000ff") << "the largest that there is";
    EXPECT_EQ(drawn(file, 16), "#00ff00");

    fs::remove_all(home_.at("thumbnails"));
    ASSERT_EQ(write(home_.at("files"), {"normal", 16, "0000ffff", 0, ""}).status, 0);
    for (const int scale : {1, 2}) {
        const QImage image = iconForFile(file.c_str())->image(128, scale);
        const int left = (128 - 16) / 2 * scale;
        EXPECT_EQ(image.pixelColor(left, left), QColor(Qt::blue)) << "a small picture";
        EXPECT_EQ(image.pixelColor(left - 1, left).alpha(), 0) << "is not enlarged";
    }
    EXPECT_EQ(drawn(file, 8), "#0000ff");
}

TEST_F(SharedThumbnails, ThatCannotBeTrustedAreNotDrawn) {
    if (!isInstalled())
        GTEST_SKIP() << "python3-gi and gir1.2-gdkpixbuf-2.0 are not installed";
    const std::string file = home_.write("files/a.txt", "text");
    const fs::path folder = home_.at("thumbnails/normal");
    const auto thumbnail = [&] { return fs::directory_iterator(folder)->path(); };
    const auto written = [this](const Thumbnail &made) {
        return [this, made] { ASSERT_EQ(write(home_.at("files"), made).status, 0); };
    };
    const struct {
        const char *what;
        std::function<void()> make;
        const char *color;
    } rows[] = {
        {"fresh", written({}), "#ff0000"},
        {"of a file modified later",
         [&] { fs::last_write_time(file, fs::last_write_time(file) + 10s); }, "#a0a0a4"},
        {"older than the file", written({"normal", 128, "ff0000ff", -1, ""}), "#a0a0a4"},
        {"newer than the file", written({"normal", 128, "ff0000ff", 1, ""}), "#a0a0a4"},
        {"of another file", written({"normal", 128, "ff0000ff", 0, "file:///etc/passwd"}),
         "#a0a0a4"},
        {"larger than its folder says", written({"normal", 256, "ff0000ff", 0, ""}), "#a0a0a4"},
        {"truncated",
         [&] {
             written({})();
             fs::resize_file(thumbnail(), fs::file_size(thumbnail()) / 2);
         },
         "#a0a0a4"},
        {"a terabyte",
         [&] {
             written({})();
             fs::resize_file(thumbnail(), uintmax_t{1} << 40);
         },
         "#a0a0a4"},
        {"a link to a fresh one",
         [&] {
             written({})();
             const fs::path real = home_.at("real.png");
             const fs::path link = thumbnail();
             fs::rename(link, real);
             fs::create_symlink(real, link);
         },
         "#a0a0a4"},
        {"a fifo",
         [&] {
             written({})();
             const fs::path fifo = thumbnail();
             fs::remove(fifo);
             ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
         },
         "#a0a0a4"},
    };
    for (const auto &row : rows) {
        row.make();
        EXPECT_EQ(drawn(file), row.color) << row.what;
        if (std::string(row.what) != "fresh")
            fs::remove_all(folder);
    }
}

} // namespace
