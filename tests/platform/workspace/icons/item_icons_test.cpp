// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Where the icon of an item comes from.
#include "tests/platform/workspace/icons/IconHome.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/UnresponsiveMount.h"

#include <chrono>
#include <functional>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include <QCryptographicHash>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;
using namespace std::chrono_literals;

class ItemIcons : public IconHome {
protected:
    /// One source more, which is more important than those before it.
    struct Step {
        const char *what;
        std::function<void(const QColor &)> add;
    };

    void expectEachToWin(const std::string &item, const std::vector<Step> &steps) const {
        int hue = 0;
        for (const Step &step : steps) {
            constexpr int kNext = 30; // degrees
            const QColor color = QColor::fromHsv(hue += kNext, 255, 200);
            step.add(color);
            EXPECT_EQ(drawn(item), color.name().toStdString()) << step.what;
            const IconRef found = description(item);
            const bool hasFile = !found.customIconOf.isEmpty() || !found.file.isEmpty() ||
                                 !found.thumbnailOf.isEmpty();
            EXPECT_EQ(found.version != 0, hasFile) << step.what;
        }
    }

    [[nodiscard]] Step lookup() const {
        return {"the lookup of the desktop", [this](const QColor &color) {
                    const std::string file = picture("looked-up.png", color);
                    setDesktopIconLookup([file](const QByteArray &) {
                        return DesktopIcon{QByteArray::fromStdString(file), {}};
                    });
                }};
    }

    /// A thumbnail as Qt writes it.
    void thumbnail(const std::string &path, const QColor &color) const {
        struct stat item = {};
        ASSERT_EQ(stat(path.c_str(), &item), 0);
        const QString uri = "file://" + QString::fromStdString(path);
        QImage image(128, 128, QImage::Format_ARGB32);
        image.fill(color);
        image.setText("Thumb::URI", uri);
        image.setText("Thumb::MTime", QString::number(item.st_mtim.tv_sec));
        const QByteArray name =
            QCryptographicHash::hash(uri.toLatin1(), QCryptographicHash::Md5).toHex();
        const bool isFirst = fs::create_directories(home_.at("thumbnails/normal"));
        EXPECT_TRUE(image.save(
            QString::fromStdString(home_.at("thumbnails/normal/" + name.toStdString() + ".png"))));
        const auto noticed = std::chrono::steady_clock::now() + (isFirst ? 10ms : 0ms);
        while (std::chrono::steady_clock::now() < noticed) // a new folder is, after 2 ms
            std::this_thread::yield();
    }

    [[nodiscard]] static std::string entry(const std::string &icon) {
        return "[Desktop Entry]\nType=Application\nName=a\nExec=a\nIcon=" + icon + "\n";
    }
};

TEST_F(ItemIcons, OfAFolderComeFromTheMostImportantSource) {
    const std::string item = home_.folder("Papers.app");
    const std::vector<Step> steps = {
        {"kind", [this](const QColor &color) { themeIcon("folder", color); }},
        {"purpose of a user's folder",
         [this](const QColor &color) {
             themeIcon("folder-documents", color);
             (void)home_.write("user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papers.app\"\n");
         }},
        {"AppDir, whose icon only the theme has",
         [this](const QColor &color) {
             themeIcon("thing", color);
             (void)home_.write("Papers.app/AppRun", "");
             (void)home_.write("Papers.app/a.desktop", entry("thing"));
         }},
        {"AppDir", [this](const QColor &color) { (void)picture("Papers.app/thing.png", color); }},
        {"bundle",
         [this](const QColor &color) {
             (void)home_.write("Papers.app/Contents/Info.plist",
                               "<plist><dict><key>CFBundleIconFile</key><string>A</string></dict>"
                               "</plist>");
             (void)picture("Papers.app/Contents/Resources/A.icns", color);
         }},
        lookup(),
        {".directory, a theme's icon",
         [this](const QColor &color) {
             themeIcon("chosen", color);
             (void)home_.write("Papers.app/.directory", "[Desktop Entry]\nIcon=chosen\n");
         }},
        {".directory, relative",
         [this](const QColor &color) {
             (void)picture("Papers.app/.own/b c.png", color);
             (void)home_.write("Papers.app/.directory", "[Desktop Entry]\nIcon=./.own/b c.png\n");
         }},
        {".directory, absolute",
         [this](const QColor &color) {
             const std::string file = picture("elsewhere.png", color);
             (void)home_.write("Papers.app/.directory", "[Desktop Entry]\nIcon=" + file + "\n");
         }},
        {"custom icon",
         [this, &item](const QColor &color) { setCustomIcon(item, item + "/Icon\r", color); }},
    };
    expectEachToWin(item, steps);
    const std::string best = drawn(item);
    EXPECT_EQ(drawn(home_.link("link", "Papers.app")), best);
    for (const char *const form : {"/", "/.", "/Contents/..", "//"})
        EXPECT_EQ(drawn(item + form), best) << form;
}

TEST_F(ItemIcons, OfAFileComeFromTheMostImportantSource) {
    const std::string entryFile = home_.write("a.desktop", entry(""));
    const std::string image = home_.write("a.AppImage", "");
    const QByteArray digest = QCryptographicHash::hash(QByteArray::fromStdString("file://" + image),
                                                       QCryptographicHash::Md5);
    const auto custom = [this](const std::string &item) {
        return Step{"custom icon",
                    [this, item](const QColor &color) { setCustomIcon(item, item, color); }};
    };
    const auto thumbnailOf = [this](const std::string &item) {
        return Step{"thumbnail", [this, item](const QColor &color) { thumbnail(item, color); }};
    };
    const std::string integrated =
        "applications/appimagekit_" + digest.toHex().toStdString() + "-a.desktop";
    const std::vector<Step> steps = {
        {"kind", [this](const QColor &color) { themeIcon("unknown", color); }},
        thumbnailOf(image),
        {"AppImage that was integrated, a theme's icon",
         [&](const QColor &color) {
             themeIcon("integrated", color);
             (void)home_.write(integrated, entry("integrated"));
         }},
        {"AppImage that was integrated, absolute",
         [&](const QColor &color) {
             (void)home_.write(integrated, entry(picture("integrated.png", color)));
         }},
        lookup(),
        custom(image),
    };
    expectEachToWin(image, steps);
    setDesktopIconLookup({});
    themeIcon("text-x-generic", Qt::black);
    expectEachToWin(
        entryFile,
        {{"application",
          [this](const QColor &color) { themeIcon("application-x-executable", color); }},
         {"kind", [this](const QColor &color) { themeIcon("application-x-desktop", color); }},
         thumbnailOf(entryFile),
         {"desktop entry, a theme's icon",
          [&](const QColor &color) {
              themeIcon("named", color);
              (void)home_.write("a.desktop", entry("named.png"));
          }},
         {"desktop entry, absolute",
          [&](const QColor &color) {
              (void)home_.write("a.desktop", entry(picture("named.png", color)));
          }},
         lookup(),
         custom(entryFile)});
}

TEST_F(ItemIcons, OfAProgramAreFoundInInheritedThemesThoseOfAKindInTheFirstWithAny) {
    const std::string program =
        home_.write("x.desktop", "[Desktop Entry]\nType=Application\nIcon=program\n");
    const std::string text = home_.write("x.txt", "text");
    (void)home_.write("icons/hicolor/index.theme", "[Icon Theme]\nDirectories=a\n[a]\nSize=128\n");
    (void)picture("icons/hicolor/a/program.png", Qt::green);
    (void)picture("icons/hicolor/a/text-plain.png", Qt::green);
    themeIcon("application-x-executable", Qt::red);
    themeIcon("text-x-generic", Qt::red);
    EXPECT_EQ(drawn(program), QColor(Qt::green).name().toStdString());
    EXPECT_EQ(drawn(text), QColor(Qt::red).name().toStdString());
}

TEST_F(ItemIcons, OfAVolumeAreThoseOfItsMediumUnlessItHasOneOfItsOwn) {
    const MountedFolder volume("tmpfs");
    if (!volume.failureReason().empty())
        GTEST_SKIP() << volume.failureReason();
    themeIcon("drive-harddisk", Qt::red);
    themeIcon("user-home", Qt::blue);
    EXPECT_EQ(drawn(volume.path()), "#ff0000");
    EXPECT_EQ(drawn(home_.link("link to volume", volume.path())), "#ff0000");
    fs::copy(picture("green.png", Qt::green), volume.at(".VolumeIcon.icns"));
    EXPECT_EQ(drawn(volume.path()), "#ff0000") << "without the flag";
    setFlag(volume.path(), true);
    EXPECT_EQ(drawn(volume.path()), "#00ff00");
    fs::remove(volume.at(".VolumeIcon.icns"));
    fs::create_symlink(home_.at("green.png"), volume.at(".VolumeIcon.icns"));
    EXPECT_EQ(drawn(volume.path()), "#ff0000") << "a link out of the volume";
    setenv("HOME", volume.path().c_str(), 1);
    EXPECT_EQ(drawn(volume.path()), "#0000ff");
}

/// What a hostile owner puts in a folder, and what is named by the description nevertheless.
TEST_F(ItemIcons, AreNotReadFromWhatOthersPutInTheWay) {
    const std::string good = picture("good.png", Qt::red);
    (void)home_.fifo("fifo");
    (void)home_.link("to zero", "/dev/zero");
    (void)home_.write("plain.directory", "[Desktop Entry]\nIcon=thing\n");
    const std::string plist =
        "<plist><dict><key>CFBundleIconFile</key><string>A</string></dict></plist>";
    (void)home_.write("Info.plist", plist);
    const auto directoryFile = [this](const std::string &icon) {
        return [this, icon] {
            (void)home_.write("f/.directory", "[Desktop Entry]\nIcon=" + icon + "\n");
        };
    };
    const auto huge = [this](const std::string &name, const std::string &start) {
        (void)home_.write(name, start);
        fs::resize_file(home_.at(name), uintmax_t{1} << 40);
    };
    const auto answer = [](const char *file, const char *name) {
        return [file, name] {
            setDesktopIconLookup([file, name](const QByteArray &) {
                return DesktopIcon{file, name};
            });
        };
    };
    const auto appDir = [this](const std::string &icon) {
        (void)home_.write("f/AppRun", "");
        (void)home_.write("f/a.desktop", entry(icon));
    };
    const struct {
        const char *what;
        std::function<void()> make;
        const char *name; ///< the first name of the theme
    } rows[] = {
        {".directory is a link", [&] { (void)home_.link("f/.directory", good); }, "folder"},
        {".directory is a link to one",
         [&] { (void)home_.link("f/.directory", home_.at("plain.directory")); }, "folder"},
        {".directory is a fifo", [&] { (void)home_.fifo("f/.directory"); }, "folder"},
        {".directory is a folder", [&] { (void)home_.folder("f/.directory"); }, "folder"},
        {".directory of a terabyte", [&] { huge("f/.directory", "[Desktop Entry]\nIcon=thing\n"); },
         "thing"},
        {".directory in UTF-16",
         [&] {
             const std::u16string text = u"[Desktop Entry]\nIcon=thing\n";
             (void)home_.write("f/.directory",
                               {reinterpret_cast<const char *>(text.data()), text.size() * 2});
         },
         "folder"},
        {"no icon", directoryFile(""), "folder"},
        {"a name with ..", directoryFile("../good.png"), "folder"},
        {"out of the folder", directoryFile("./../good.png"), "folder"},
        {"out of the folder by a link",
         [&] {
             directoryFile("./a.png")();
             (void)home_.link("f/a.png", good);
         },
         "folder"},
        {"by a folder that is a link",
         [&] {
             directoryFile("./a/good.png")();
             (void)home_.link("f/a", "..");
         },
         "folder"},
        {"a device", directoryFile("/dev/zero"), "folder"},
        {"a link to a device", directoryFile(home_.at("to zero")), "folder"},
        {"a fifo", directoryFile(home_.at("fifo")), "folder"},
        {"a folder", directoryFile(home_.path()), "folder"},
        {"a name longer than names are", directoryFile(std::string(300, 'a')), "folder"},
        {"a name with NUL", directoryFile(std::string("a\0b", 3)), "folder"},
        {"the lookup names a device", answer("/dev/zero", ""), "folder"},
        {"the lookup gives a relative path", answer("good.png", "thing"), "thing"},
        {"the lookup gives no name", answer("", "../thing"), "folder"},
        {"AppRun alone is a fifo", [&] { (void)home_.fifo("f/AppRun"); }, "folder"},
        {"the entry of an AppDir is a fifo",
         [&] {
             (void)home_.write("f/AppRun", "");
             (void)home_.fifo("f/a.desktop");
         },
         "folder"},
        {"the entry of an AppDir lies outside",
         [&] {
             (void)home_.write("f/AppRun", "");
             (void)home_.link("f/a.desktop", home_.at("plain.directory"));
         },
         "folder"},
        {"an AppDir whose icon lies outside",
         [&] {
             appDir("good");
             (void)home_.link("f/.DirIcon", good);
         },
         "good"},
        {"an AppDir that names a path", [&] { appDir(good); }, "application-x-executable"},
        {"a bundle's icon lies outside",
         [&] {
             (void)home_.write("f/b.app/Contents/Info.plist", plist);
             (void)home_.folder("f/b.app/Contents/Resources");
             (void)home_.link("f/b.app/Contents/Resources/A.icns", good);
         },
         "application-x-executable"},
        {"its Info.plist lies outside",
         [&] {
             (void)home_.folder("f/b.app/Contents");
             (void)home_.link("f/b.app/Contents/Info.plist", home_.at("Info.plist"));
         },
         "folder"},
        {"its Info.plist has a terabyte",
         [&] {
             (void)home_.folder("f/b.app/Contents");
             huge("f/b.app/Contents/Info.plist", plist);
         },
         "folder"},
        {"user-dirs.dirs is a fifo", [&] { (void)home_.fifo("user-dirs.dirs"); }, "folder"},
        {"thumbnails is a file", [&] { (void)home_.write("thumbnails", ""); }, "folder"},
    };
    for (const auto &row : rows) {
        (void)home_.folder("f");
        row.make();
        const std::string item = fs::exists(home_.at("f/b.app")) ? "f/b.app" : "f";
        const IconRef found = description(home_.at(item));
        EXPECT_EQ(found.themeNames.value(0).toStdString(), row.name) << row.what;
        EXPECT_EQ(found.file, "") << row.what;
        EXPECT_EQ(found.version, 0U) << row.what;
        EXPECT_FALSE(iconForFile(home_.at(item).c_str())->image(16).isNull()) << row.what;
        setDesktopIconLookup({});
        fs::remove_all(home_.at("f"));
    }
}

TEST_F(ItemIcons, DoNotWaitForAFileSystemThatDoesNotAnswer) {
    const MountedFolder mounted("tmpfs");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const std::string silent = home_.folder("silent");
    const UnresponsiveMount mount(silent);
    if (!mount.failureReason().empty())
        GTEST_SKIP() << mount.failureReason();
    const std::string file = silent + "/a.png";
    (void)home_.link("link", silent + "/a");
    (void)home_.write("named.desktop", entry(file));
    (void)home_.write("directory/.directory", "[Desktop Entry]\nIcon=" + file + "\n");
    (void)home_.folder("AppDir");
    (void)home_.link("AppDir/AppRun", file);
    (void)home_.folder("b.app/Contents");
    (void)home_.link("b.app/Contents/Info.plist", file);
    const char *const items[] = {"link", "named.desktop", "directory", "AppDir", "b.app", "silent"};
    for (const char *const item : items)
        EXPECT_EQ(runWithTimeout([&] {
                      const auto icon = iconForFile(home_.at(item).c_str());
                      return icon->image(16).isNull() ? 1 : 0;
                  }),
                  0)
            << item;
    // The owner of a folder puts the link there after the icon was found.
    (void)picture("c/icons/a.png", Qt::red);
    (void)home_.write("c/.directory", "[Desktop Entry]\nIcon=./icons/a.png\n");
    const auto icon = iconForFile(home_.at("c").c_str());
    fs::rename(home_.at("c/icons"), home_.at("c/old"));
    (void)home_.link("c/icons", silent);
    EXPECT_EQ(runWithTimeout([&] { return icon->image(16).isNull() ? 1 : 0; }), 0);
}

TEST_F(ItemIcons, ChangeTheirVersionWithTheContentOfTheirFiles) {
    const std::string folder = home_.folder("folder");
    const std::string file = home_.write("a.txt", "text");
    const std::string named = picture("named.png", Qt::red);
    (void)home_.write("one.desktop", entry(named));
    (void)home_.write("two.desktop", entry(named));
    (void)home_.write("inside/.directory", "[Desktop Entry]\nIcon=./b.png\n");
    (void)picture("inside/b.png", Qt::red);
    const struct {
        const char *what;
        std::string item;
        std::function<void(const QColor &)> change;
    } rows[] = {
        {"custom icon of a file", file,
         [&](const QColor &color) { setCustomIcon(file, file, color); }},
        {"custom icon of a folder", folder,
         [&](const QColor &color) { setCustomIcon(folder, folder + "/Icon\r", color); }},
        {"file of a desktop entry", home_.at("one.desktop"),
         [&](const QColor &color) { (void)picture("named.png", color, 64); }},
        {"file in a folder", home_.at("inside"),
         [&](const QColor &color) {
             const std::string next = picture("inside/next.png", color);
             fs::rename(next, home_.at("inside/b.png"));
         }},
        {"thumbnail", home_.write("b.txt", "text"),
         [&](const QColor &color) { thumbnail(home_.at("b.txt"), color); }},
    };
    for (const auto &row : rows) {
        row.change(Qt::green);
        const IconRef before = description(row.item);
        EXPECT_EQ(drawn(row.item), "#00ff00") << row.what;
        (void)home_.write("folder/unrelated", "");
        EXPECT_EQ(description(row.item), before) << row.what << ", unchanged";
        // The clock of a file system may stand still for some milliseconds.
        const auto end = std::chrono::steady_clock::now() + 5s;
        do
            row.change(Qt::blue);
        while (description(row.item) == before && std::chrono::steady_clock::now() < end);
        EXPECT_NE(description(row.item).version, 0U);
        EXPECT_EQ(drawn(row.item), "#0000ff") << row.what << ", changed";
    }
    EXPECT_EQ(description(home_.at("one.desktop")), description(home_.at("two.desktop")));
    EXPECT_EQ(description(home_.write("c.txt", "")), description(home_.write("d.txt", "")));
    EXPECT_EQ(description(home_.at("c.txt")).version, 0U);
    EXPECT_EQ(description(home_.folder("plain")).version, 0U);
}

TEST_F(ItemIcons, FollowTheListOfTheUsersFolders) {
    const std::string papers = home_.folder("Papers");
    const auto name = [&] { return description(papers).themeNames.value(0).toStdString(); };
    const auto list = [this](const char *key) {
        (void)home_.write("user-dirs.dirs", std::string(key) + "=\"$HOME/Papers\"\n");
    };
    EXPECT_EQ(name(), "folder");
    list("XDG_DOCUMENTS_DIR");
    EXPECT_EQ(name(), "folder-documents");
    list("XDG_MUSIC_DIR");
    EXPECT_EQ(name(), "folder-music");
    fs::rename(home_.at("user-dirs.dirs"), home_.at("list"));
    EXPECT_EQ(name(), "folder");
    (void)home_.link("user-dirs.dirs", "list");
    EXPECT_EQ(name(), "folder-music");
    (void)home_.write("list", "XDG_VIDEOS_DIR=\"$HOME/Papers/\"\n");
    EXPECT_EQ(name(), "folder-videos");
    (void)home_.write("list", "XDG_PICTURES_DIR=\"$HOME/Pictures\"\n");
    EXPECT_EQ(name(), "folder");
    const auto linked = description(home_.link("Pictures", "Papers"));
    EXPECT_EQ(linked.themeNames.value(0), "folder-pictures");
}

} // namespace
