// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

#include <sys/stat.h>

namespace {

TEST(Info, AgreesWithStat) {
    const TemporaryFolder folder;
    const std::string file = folder.file("a.txt", 281'624);
    ASSERT_EQ(chmod(file.c_str(), 04751), 0);
    const std::string json = mwfile({"info", "--json", file}).output;
    const std::string stat = runProcess({"stat", "-c", "%s %h %U %G %Y %W", file}).output;
    EXPECT_EQ(readJson(json,
                       "'%d %d %s %s %d %d\\n' % (d['size'], d['links'], d['owner'], d['group'], "
                       "*[__import__('datetime').datetime.fromisoformat("
                       "(d[key] or '1970-01-01T00:00:00Z').replace('Z', '+00:00')).timestamp() "
                       "for key in ('dateModified', 'dateCreated')])"),
              stat);
    const std::string link = folder.link("link", "a.txt");
    for (const std::string &path : {file, link}) {
        const std::string text = mwfile({"info", path}).output;
        for (const char *const line : {"rwxr-x--x (751)", "set user id"})
            EXPECT_NE(text.find(line), std::string::npos) << text;
    }
    EXPECT_NE(mwfile({"info", file}).output.find("281,624 bytes (275 k)"), std::string::npos);
}

TEST(Info, ShowsVersionKindAndTarget) {
    const TemporaryFolder folder;
    folder.folder("Editor.app");
    folder.folder("Editor.app/Contents");
    std::ofstream(folder.at("Editor.app/Contents/Info.plist"))
        << "<plist><dict><key>CFBundleGetInfoString</key><string>Editor 2</string></dict></plist>";
    std::ofstream(folder.file("note.txt")) << "text";
    const std::string alias = folder.at("alias.desktop");
    ASSERT_EQ(mwfile({"alias", "make", folder.at("note.txt"), alias}).errorOutput, "");
    struct Row {
        const char *name;
        std::vector<std::string> lines;
    };
    const Row rows[] = {
        {"Editor.app", {"application\n", "Version       Editor 2\n", "1 folder, 0 files\n"}},
        {"note.txt", {"file (plain text document)\n"}},
        {"alias.desktop", {"alias to a file\n", "Target        " + folder.at("note.txt") + "\n"}},
    };
    for (const Row &row : rows) {
        ProcessOptions options;
        options.environment = {"LC_ALL=C.UTF-8", "LANGUAGE="};
        const std::string text = mwfile({"info", folder.at(row.name)}, options).output;
        for (const std::string &line : row.lines)
            EXPECT_NE(text.find(line), std::string::npos) << text;
    }
    EXPECT_EQ(readJson(mwfile({"info", "--json", folder.at("Editor.app")}).output,
                       "d['versionString'], d['isPackagedApplication'], d['kindAsString']"),
              "('Editor 2', True, 'Application')");
}

TEST(Info, DescribesALinkUnlessThePathEndsWithASlash) {
    const TemporaryFolder folder;
    folder.folder("sub");
    folder.file("sub/x");
    const std::string link = folder.link("link", "sub");
    const std::string file = folder.file("file");
    struct Row {
        std::string path;
        const char *expression;
        std::string value;
    };
    const Row rows[] = {
        {link, "d['kind'], d['aliasOrLinkTargetKind']", "('link', 'folder')"},
        {link + "/", "d['kind'], d['fileCount'], d['subFolderCount']", "('folder', 1, 0)"},
        {folder.at("sub//"), "d['completePath']", folder.at("sub")},
        {folder.at("sub/../sub/."), "d['completePath']", folder.at("sub")},
        {folder.at("link/.."), "d['completePath']", folder.path()},
        {"/", "d['completePath']", "/"},
        {"/proc", "d['kind'], d['volumeName']", "('volume', 'proc')"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(readJson(mwfile({"info", "--json", row.path}).output, row.expression), row.value);
    for (const char *const name : {"[a,b]", "[x]", "++"}) // words that CLI11 interprets
        EXPECT_EQ(readJson(mwfile({"info", "--json", folder.file(name)}).output, "d['name']"),
                  name);
    EXPECT_EQ(mwfile({"info", file + "/"}).errorOutput, "mwfile: " + file + "/: not a folder\n");
    EXPECT_EQ(mwfile({"info", folder.at("sub/../gone/x/..")}).status, 1);

    ProcessOptions inside;
    inside.workingFolder = folder.at("sub");
    EXPECT_EQ(readJson(mwfile({"info", "--json", "x", "."}, inside).output,
                       "[i['completePath'] for i in d]"),
              "['" + folder.at("sub/x") + "', '" + folder.at("sub") + "']");
}

TEST(Info, DoesNotBlockOnFifosAndDevices) {
    const TemporaryFolder folder;
    const ProcessResult result = runProcess({"timeout", "5", MWFILE, "info", folder.fifo("fifo"),
                                             "/dev/zero", "/dev/tty", folder.path()});
    EXPECT_EQ(result.status, 0) << result.errorOutput;
    EXPECT_NE(result.output.find("fifo\n"), std::string::npos);
    EXPECT_NE(result.output.find("character device\n"), std::string::npos);
}

TEST(Info, ContinuesAfterAFailure) {
    const TemporaryFolder folder;
    const std::string file = folder.file("file");
    const ProcessResult result =
        mwfile({"info", "--json", folder.at("missing"), file, folder.at("gone")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(linesOf(result.errorOutput).size(), 2U);
    EXPECT_EQ(readJson(result.output, "len(d), d[0]['name']"), "(1, 'file')");
}

} // namespace
