// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

TEST(Info, TellsWhatStatTells) {
    const TemporaryFolder folder;
    const std::string file = folder.file("a.txt", 281'624);
    ASSERT_EQ(chmod(file.c_str(), 04751), 0);
    const std::string json = mwfile({"info", "--json", file}).output;
    const std::string stat = runProcess({"stat", "-c", "%s %h %U %G %Y", file}).output;
    EXPECT_EQ(readJson(json,
                       "'%d %d %s %s %d\\n' % (d['size'], d['links'], d['owner'], d['group'], "
                       "__import__('datetime').datetime.fromisoformat(d['dateModified']"
                       ".replace('Z', '+00:00')).timestamp())"),
              stat);
    const std::string text = mwfile({"info", file}).output;
    for (const char *const fact : {"281,624 bytes (275 k)", "rwxr-x--x (751)", "set user id"})
        EXPECT_NE(text.find(fact), std::string::npos) << fact;
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
    };
    for (const Row &row : rows)
        EXPECT_EQ(readJson(mwfile({"info", "--json", row.path}).output, row.expression), row.value);
    for (const char *const name : {"[a,b]", "[x]", "++"}) // words that mean something to CLI11
        EXPECT_EQ(readJson(mwfile({"info", "--json", folder.file(name)}).output, "d['name']"),
                  name);
    EXPECT_EQ(mwfile({"info", file + "/"}).complaints, "mwfile: " + file + "/: Not a directory\n");
    EXPECT_EQ(mwfile({"info", folder.at("sub/../gone/x/..")}).status, 1);

    ProcessOptions inside;
    inside.workingFolder = folder.at("sub");
    EXPECT_EQ(readJson(mwfile({"info", "--json", "x", "."}, inside).output,
                       "[i['completePath'] for i in d]"),
              "['" + folder.at("sub/x") + "', '" + folder.at("sub") + "']");
}

TEST(Info, NeverWaitsForANode) {
    const TemporaryFolder folder;
    const ProcessResult result = runProcess({"timeout", "5", MWFILE, "info", folder.fifo("fifo"),
                                             "/dev/zero", "/dev/tty", folder.path()});
    EXPECT_EQ(result.status, 0) << result.complaints;
    EXPECT_NE(result.output.find("fifo\n"), std::string::npos);
    EXPECT_NE(result.output.find("character device\n"), std::string::npos);
}

TEST(Info, GoesOnAfterAPathThatFails) {
    const TemporaryFolder folder;
    const std::string file = folder.file("file");
    const ProcessResult result =
        mwfile({"info", "--json", folder.at("missing"), file, folder.at("gone")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(linesOf(result.complaints).size(), 2U);
    EXPECT_EQ(readJson(result.output, "len(d), d[0]['name']"), "(1, 'file')");
}

} // namespace
