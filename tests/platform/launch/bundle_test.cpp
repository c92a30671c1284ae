// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/Bundle.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using MWCore::Bundle;

struct File {
    std::string path; ///< in the bundle
    std::string content;
};

/// Makes the folder @p name with the files, and opens it.
std::optional<Bundle> bundleOf(const TemporaryFolder &folder, const std::string &name,
                               const std::vector<File> &files) {
    for (const File &file : files)
        (void)folder.write(name + '/' + file.path, file.content);
    return Bundle::open(QByteArray::fromStdString(folder.at(name)));
}

std::string list(const std::string &executable) {
    return "<plist><dict><key>CFBundleExecutable</key><string>" + executable +
           "</string></dict></plist>";
}

const std::string kEntry = "[Desktop Entry]\nName=A\n";

struct LayoutRow {
    const char *what;
    const char *name;
    std::vector<File> files;
    bool isApplication;
    const char *executable; ///< in the bundle; null: none
};
const LayoutRow kLayoutRows[] = {
    {"application",
     "A.app",
     {{"Contents/Info.plist", list("run")}, {"Contents/MacOS/run", ""}},
     true,
     "/Contents/MacOS/run"},
    {"capital letters", "B.APP", {{"Contents/Info.plist", list("run")}}, true, nullptr},
    {"named like the folder",
     "C.x.app",
     {{"Contents/Info.plist", "<plist><dict/></plist>"}, {"Contents/MacOS/C.x", ""}},
     true,
     "/Contents/MacOS/C.x"},
    {"not an application",
     "D.bundle",
     {{"Contents/Info.plist", list("run")}, {"Contents/MacOS/run", ""}},
     false,
     "/Contents/MacOS/run"},
    {"flat", "E.app", {{"Info.plist", list("run")}, {"run", ""}}, false, "/run"},
    {"AppDir", "F", {{"AppRun", ""}, {"b.desktop", kEntry}}, true, "/AppRun"},
    {"executable in a folder",
     "G.app",
     {{"Contents/Info.plist", list("in/run")}, {"Contents/MacOS/in/run", ""}},
     true,
     nullptr},
    {"executable outside",
     "H.app",
     {{"Contents/Info.plist", list("../Info.plist")}, {"Contents/MacOS/H", ""}},
     true,
     nullptr},
    {"executable above",
     "I.app",
     {{"Contents/Info.plist", list("..")}, {"Contents/MacOS/I", ""}},
     true,
     nullptr},
    {"executable that is a folder",
     "J.app",
     {{"Contents/Info.plist", list("in")}, {"Contents/MacOS/in/run", ""}},
     true,
     nullptr},
};

TEST(Bundle, OpensEveryLayout) {
    const TemporaryFolder folder;
    for (const LayoutRow &row : kLayoutRows) {
        const auto bundle = bundleOf(folder, row.name, row.files);
        ASSERT_TRUE(bundle) << row.what;
        const QByteArray path = bundle->path();
        EXPECT_EQ(path.toStdString(), folder.at(row.name)) << row.what;
        EXPECT_EQ(bundle->isApplication(), row.isApplication) << row.what;
        EXPECT_EQ(bundle->executablePath(), row.executable ? path + row.executable : QByteArray())
            << row.what;
    }
}

TEST(Bundle, RejectsOtherFolders) {
    const TemporaryFolder folder;
    EXPECT_FALSE(bundleOf(folder, "empty.app", {{"Contents/x", ""}}));
    EXPECT_FALSE(bundleOf(folder, "damaged.app", {{"Contents/Info.plist", "<plist>"}}));
    EXPECT_FALSE(bundleOf(folder, "list", {{"Info.plist", "<plist><array/></plist>"}}));
    EXPECT_FALSE(bundleOf(folder, "half", {{"AppRun", ""}}));
    EXPECT_FALSE(bundleOf(folder, "other half", {{"a.desktop", kEntry}}));
    EXPECT_FALSE(bundleOf(folder, "missing", {}));
    folder.folder("fifo");
    std::ignore = folder.fifo("fifo/Info.plist");
    EXPECT_FALSE(bundleOf(folder, "fifo", {}));
}

TEST(Bundle, ReadsTheDesktopEntryOfAnAppDir) {
    const TemporaryFolder folder;
    const auto bundle = bundleOf(folder, "A",
                                 {{"AppRun", ""},
                                  {"z.desktop", "[Desktop Entry]\nName=wrong\n"},
                                  {"org.a.desktop", "[Desktop Entry]\nName=A\nIcon=i\nComment=c\n"
                                                    "X-AppImage-Version=1.2\n"}});
    ASSERT_TRUE(bundle);
    const QVariantMap expected = {
        {"CFBundleName", "A"},
        {"CFBundleIconFile", "i"},
        {"CFBundleIdentifier", "org.a"},
        {"CFBundleShortVersionString", "1.2"},
        {"CFBundleGetInfoString", "1.2"},
        {"CFBundlePackageType", "APPL"},
    };
    EXPECT_EQ(bundle->infoDictionary(), expected);

    const auto other = bundleOf(
        folder, "B", {{"AppRun", ""}, {"b.desktop", "[Desktop Entry]\nName=B\nComment=c\n"}});
    ASSERT_TRUE(other);
    EXPECT_EQ(other->value("CFBundleGetInfoString"), "c");
    EXPECT_EQ(other->value("CFBundleShortVersionString"), QVariant());
}

} // namespace
