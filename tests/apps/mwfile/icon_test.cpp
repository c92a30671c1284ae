// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using Arguments = std::vector<std::string>;

/// A folder with pictures of one colour each, and the command run in it.
class Icon : public testing::Test {
protected:
    Icon() {
        picture("red.ppm", 16, "\xFF\x20\x20");
        picture("blue.ppm", 1024, "\x20\x20\xFF");
    }

    void picture(const std::string &name, int width, const std::string &pixel) const {
        const std::string side = std::to_string(width);
        std::string content = "P6 " + side + " " + side + " 255\n";
        for (int count = 0; count < width * width; ++count)
            content += pixel;
        folder_.write(name, content);
    }

    ProcessResult run(Arguments arguments, ProcessOptions options = {}) const {
        arguments.insert(arguments.begin(), "icon");
        options.workingFolder = folder_.path();
        return mwfile(arguments, options);
    }

    /// Its output, or its error message.
    std::string outputOf(const Arguments &arguments) const {
        const ProcessResult result = run(arguments);
        return result.output + result.errorOutput;
    }

    /// The types of the elements, in order.
    std::string typesIn(const std::string &file) const {
        return readJson(outputOf({"info", "--json", file}),
                        "' '.join(e['type'] for e in d['elements'])");
    }

    bool areEqual(const std::string &one, const std::string &other) const {
        return runProcess({"diff", "-r", folder_.at(one), folder_.at(other)}).status == 0;
    }

    /// What ImageMagick reads in a picture, in its format @p properties.
    std::string described(const std::string &file, const std::string &properties) const {
        return runProcess({imageMagick(), folder_.at(file), "-format", properties, "info:"}).output;
    }

    TemporaryFolder folder_;
};

TEST_F(Icon, IsMadeFromOnePictureOrFromThoseThatFit) {
    EXPECT_EQ(outputOf({"import", "blue.ppm", "classic.icns"}), "");
    EXPECT_EQ(typesIn("classic.icns"),
              "ic09 ic08 it32 t8mk il32 icl8 l8mk ICN# is32 ics8 s8mk ics#");
    EXPECT_EQ(outputOf({"import", "red.ppm", "blue.ppm", "classic.icns"}),
              "mwfile: blue.ppm: only this picture is used; --modern uses all of them\n");
    EXPECT_EQ(outputOf({"import", "blue.ppm", "--modern", "blue.icns"}), "");
    EXPECT_EQ(outputOf({"import", "red.ppm", "blue.ppm", "--modern", "both.icns"}), "");
    EXPECT_EQ(outputOf({"import", "red.ppm", "red.icns", "--modern", "--dark", "blue.ppm"}),
              "mwfile: red.ppm: enlarged from 16 to 1,024 pixels for the largest icons\n");
    EXPECT_TRUE(outputOf({"info", "red.icns"})
                    .starts_with("red.icns: 18 images, 16 to 1024 pixels, dark variant, "));
    for (const char *const name : {"blue", "both", "red"})
        EXPECT_EQ(outputOf({"export", name + std::string(".icns"), name}), "");
    EXPECT_TRUE(areEqual("both/16x16_ic04.png", "red/16x16_ic04.png"));
    EXPECT_TRUE(areEqual("both/16x16@2x_ic11.png", "blue/16x16@2x_ic11.png"));
    EXPECT_TRUE(areEqual("red/dark/512x512@2x_ic10.png", "blue/512x512@2x_ic10.png"));
    EXPECT_FALSE(areEqual("red/512x512_ic09.png", "blue/512x512_ic09.png"));
}

TEST_F(Icon, IsTakenApartAsAnIconsetAndPutTogetherAgain) {
    EXPECT_EQ(outputOf({"import", "red.ppm", "blue.ppm", "--modern", "both.icns"}), "");
    EXPECT_EQ(outputOf({"export", "both.icns", "set.iconset"}), "");
    EXPECT_EQ(outputOf({"import", "set.iconset/", "--modern", "--effort", "9", "again.icns"}), "");
    EXPECT_EQ(outputOf({"export", "again.icns", "images"}), "");
    EXPECT_EQ(outputOf({"export", "both.icns", "images"}),
              "mwfile: images: not empty; --force writes into it\n");
    EXPECT_EQ(outputOf({"export", "both.icns", "before"}), "");
    EXPECT_TRUE(areEqual("before", "images"));
    EXPECT_EQ(outputOf({"export", "both.icns", "--force", "images"}), "");
    EXPECT_EQ(outputOf({"import", "red.ppm", "set.iconset", "x.icns"}),
              "mwfile: set.iconset: only its largest picture is used; --modern uses all of them\n");
}

TEST_F(Icon, DrawsTextWithoutADisplayOrABus) {
    const std::string begin = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>";
    folder_.write("plain.svg", begin + "<rect width='9' height='9' fill='teal'/></svg>");
    folder_.write("text.svg", begin + "<rect width='9' height='9' fill='teal'/>"
                                      "<text y='9' font-size='9'>A</text></svg>");
    ProcessOptions session;
    session.environment = {"DISPLAY=:1", "DBUS_SESSION_BUS_ADDRESS=unix:path=/dev/null",
                           "QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORMTHEME=gtk3", "NO_COLOR=1"};
    for (const char *const name : {"plain", "text"}) {
        const std::string icon = name + std::string(".icns");
        const ProcessResult made = run({"import", name + std::string(".svg"), icon}, session);
        if (made.errorOutput.find("known format") != std::string::npos)
            GTEST_SKIP() << "Qt has no plug-in for SVG";
        EXPECT_EQ(made.errorOutput, "");
        EXPECT_EQ(made.status, 0);
    }
    EXPECT_FALSE(areEqual("plain.icns", "text.icns"));
}

TEST_F(Icon, SetOnItemsIsReadBackAndRemoved) {
    (void)folder_.file("f\xFF");
    (void)folder_.folder("d");
    EXPECT_EQ(outputOf({"import", "blue.ppm", "blue.icns"}), "");
    for (const std::string item : {"f\xFF", "d"}) {
        EXPECT_EQ(outputOf({"remove", item}),
                  "mwfile: " + std::string(item == "d" ? "d" : "f\\xff") +
                      ": has no custom icon\n");
        EXPECT_EQ(outputOf({"set", item, "red.ppm"}), "");
        EXPECT_EQ(outputOf({"set", item, "blue.icns", "--compatible"}), "");
        EXPECT_EQ(outputOf({"export", item, "back.icns"}), "");
        EXPECT_TRUE(areEqual("back.icns", "blue.icns"));
        EXPECT_NE(outputOf({"info", item}).find(": custom icon, 9 images"), std::string::npos);
        EXPECT_EQ(outputOf({"remove", item}), "");
        EXPECT_NE(outputOf({"info", item}).find("has no custom icon"), std::string::npos);
    }
    EXPECT_EQ(runProcess({"ls", "-A", folder_.at("d")}).output, "");
    EXPECT_EQ(outputOf({"export", "d", "shown"}), ""); // the desktop's icon for folders
    EXPECT_NE(runProcess({"ls", folder_.at("shown")}).output.find("128x128"), std::string::npos);
}

TEST_F(Icon, OfAnyItemIsExportedAsOnePicture) {
    (void)folder_.fifo("fifo");
    (void)folder_.link("broken", "gone");
    (void)folder_.file("f\xFF");
    ASSERT_EQ(chmod(folder_.folder("secret").c_str(), 0), 0);
    ASSERT_EQ(chmod(folder_.path().c_str(), 0777), 0);
    ProcessOptions other;
    other.asNobody = true;
    for (const char *const item : {"fifo", "broken", "f\xFF", "secret", "/dev/zero", "/"}) {
        EXPECT_EQ(run({"export", item, "out.png", "--force", "--size", "48"}, other).errorOutput,
                  "");
        EXPECT_EQ(described("out.png", "%m %w %h"), "PNG 48 48") << item;
    }
    EXPECT_EQ(run({"export", "/", "out.png"}, other).errorOutput,
              "mwfile: out.png: exists; --force replaces it\n");
    EXPECT_EQ(outputOf({"import", "red.ppm", "blue.ppm", "--modern", "both.icns"}), "");
    EXPECT_EQ(outputOf({"export", "both.icns", "small.png", "--size", "16"}), "");
    EXPECT_EQ(outputOf({"export", "both.icns", "large.png"}), "");
    EXPECT_EQ(described("small.png", "%w %[hex:u.p{8,8}]"), "16 FF2020FF");
    EXPECT_EQ(described("large.png", "%w %[hex:u.p{64,64}]"), "128 2020FFFF");
}

TEST_F(Icon, OfALinkOrALockedFileIsExportedWithABadge) {
    (void)folder_.file("file");
    (void)folder_.link("link", "file");
    EXPECT_EQ(outputOf({"export", "file", "file.png"}), "");
    EXPECT_EQ(outputOf({"export", "link", "link.png"}), "");
    ASSERT_EQ(mwfile({"lock", folder_.at("file"), "on"}).errorOutput, "");
    EXPECT_EQ(outputOf({"export", "file", "locked.png"}), "");
    ASSERT_EQ(mwfile({"lock", folder_.at("file"), "off"}).errorOutput, "");
    EXPECT_FALSE(areEqual("file.png", "link.png"));
    EXPECT_FALSE(areEqual("file.png", "locked.png"));
    EXPECT_FALSE(areEqual("link.png", "locked.png"));
}

TEST_F(Icon, DamageIsReported) {
    const std::string length("\0\0\0\x0C", 4);
    folder_.write("bad.icns", std::string("icns\0\0\0\x3C", 8) + "s8mk" + length + "abcd" +
                                  "a\x1b[m" + length + "abcd" + "ic08" + length + "abcd" + "ic08" +
                                  length + "abcd");
    const std::vector<std::string> lines = linesOf(outputOf({"info", "bad.icns"}));
    EXPECT_EQ(lines[0], "bad.icns: no images, 56 bytes, 4 problems");
    EXPECT_EQ(lines[2], "  s8mk        16 x 16    mask              4 bytes");
    EXPECT_EQ(lines[3], "              has 4 bytes, not 256");
    EXPECT_EQ(lines[4], "  0x611B5B6D             other data        4 bytes");
    EXPECT_EQ(typesIn("bad.icns"), "s8mk 0x611B5B6D ic08 ic08");
    EXPECT_EQ(outputOf({"import", "blue.ppm", "good.icns"}), "");
    const ProcessResult verified = run({"verify", "bad.icns", "missing", "good.icns"});
    EXPECT_EQ(verified.status, 1);
    EXPECT_EQ(verified.output, "good.icns: valid\n");
    EXPECT_EQ(linesOf(verified.errorOutput).size(), 5U) << verified.errorOutput;
    EXPECT_EQ(outputOf({"export", "bad.icns", "out"}),
              "mwfile: bad.icns: has no image that can be decoded\n");
    EXPECT_NE(access(folder_.at("out").c_str(), F_OK), 0);
}

TEST_F(Icon, FailuresSayWhyAndChangeNothing) {
    EXPECT_EQ(outputOf({"import", "blue.ppm", "blue.icns"}), "");
    folder_.write("text", "text");
    folder_.write("text.icns", "text");
    (void)folder_.folder("d");
    (void)folder_.fifo("p");
    (void)folder_.folder("d.png");
    (void)folder_.file("full.png", 1);
    (void)folder_.link("l", "text");
    (void)folder_.link("l.png", "text");
    (void)folder_.link("broken.icns", "nothing");
    const struct {
        Arguments arguments;
        int status;
        const char *message;
    } rows[] = {
        {{"set", "missing", "blue.icns"}, 1, "missing: no such file or folder"},
        {{"set", "l", "blue.icns"}, 1, "l: a link; name its target"},
        {{"set", "p", "blue.icns"}, 1, "p: only files and folders have custom icons"},
        {{"set", "d", "p"}, 1, "p: neither a picture nor a folder that ends with .iconset"},
        {{"set", "d", "text"}, 1, "text: damaged, or not a picture in a known format"},
        {{"remove", "text"}, 1, "text: has no custom icon"},
        {{"info", "p"}, 1, "p: not an icon family, and has no custom icon"},
        {{"export", "text.icns", "out"}, 1, "text.icns: not an icon family"},
        {{"export", "blue.icns", "text"}, 1, "text: not a folder"},
        {{"export", "text.icns", "x.png"}, 1, "text.icns: not an icon family"},
        {{"export", "missing", "x.png"}, 1, "missing: no such file or folder"},
        {{"export", "text", "l.png"}, 1, "l.png: a link; name its target"},
        {{"export", "text", "d.png", "--force"}, 1, "d.png: a folder"},
        {{"export", "text", "full.png"}, 1, "full.png: exists; --force replaces it"},
        {{"export", "text", "gone/x.png"}, 1, "gone/x.png: no such file or folder"},
        {{"export", "text", "x", "--size", "9"},
         2,
         "--size: only for one PNG file; name it OUT.png"},
        {{"export", "text", "x.png", "--size", "0"}, 2, "--size: Value 0 not in range 1 to 4096"},
        {{"import", "blue.ppm", "text.icns"},
         1,
         "text.icns: not an icon family; only --force replaces it"},
        {{"import", "blue.ppm", "red.ppm"}, 2, "red.ppm: the name must end with .icns"},
        {{"import", "blue.ppm", "d/d/x.icns"}, 1, "d/d/x.icns: no such file or folder"},
        {{"import", "d", "x.icns"}, 1, "d: neither a picture nor a folder that ends with .iconset"},
        {{"import", "blue.ppm"}, 2, "OUT is required"},
        {{"import", "blue.ppm", "x.icns", "--effort", "10"},
         2,
         "--effort: Value 10 not in range 0 to 9"},
    };
    for (const auto &row : rows) {
        const ProcessResult result = run(row.arguments);
        EXPECT_EQ(result.errorOutput, std::string("mwfile: ") + row.message + "\n");
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.status, row.status) << row.message;
    }
    EXPECT_EQ(runProcess({"cat", folder_.at("text.icns")}).output, "text");
    EXPECT_EQ(runProcess({"ls", "-A", folder_.at("d")}).output, "");
    EXPECT_EQ(outputOf({"import", "blue.ppm", "text.icns", "--force"}), "");
    EXPECT_TRUE(areEqual("text.icns", "blue.icns"));
}

TEST_F(Icon, IsNotSetInAFolderOfAnotherUser) {
    EXPECT_EQ(outputOf({"import", "blue.ppm", "blue.icns"}), "");
    (void)folder_.file("f");
    (void)folder_.folder("d");
    ProcessOptions other;
    other.asNobody = true;
    ASSERT_EQ(chmod(folder_.path().c_str(), 0755), 0);
    for (const char *const item : {"f", "d"}) {
        const ProcessResult result = run({"set", item, "blue.icns"}, other);
        EXPECT_EQ(result.errorOutput, std::string("mwfile: ") + item + ": not permitted\n");
    }
    EXPECT_EQ(run({"import", "blue.ppm", "new.icns"}, other).errorOutput,
              "mwfile: new.icns: not permitted\n");
}

} // namespace
