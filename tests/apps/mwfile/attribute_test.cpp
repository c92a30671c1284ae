// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

/// Runs the command in @p folder. Returns its output, or its error message.
std::string outputOf(const TemporaryFolder &folder, const std::vector<std::string> &arguments) {
    ProcessOptions options;
    options.workingFolder = folder.path();
    const ProcessResult result = mwfile(arguments, options);
    EXPECT_EQ(result.status == 0, result.errorOutput.empty()) << result.errorOutput;
    return result.output + result.errorOutput;
}

TEST(Attributes, AreSetPrintedAndRemoved) {
    const struct {
        const char *command;
        const char *value;
        const char *shown;
        const char *removed;
        const char *none;
        const char *json; ///< with the value set
    } rows[] = {
        {"label", "red", "Red\n", "none", "None\n", "d['label'], d['isInvisible']"},
        {"label", "7", "Orange\n", "0", "None\n", "d['label'], d['isInvisible']"},
        {"type", "TEXT", "TEXT\n", "none", "none\n", "d['type'], d['isInvisible']"},
        {"creator", "tt\nt", "tt\\nt\n", "none", "none\n", "d['creator'], d['isInvisible']"},
        {"invisible", "on", "on\n", "off", "off\n", "d['type'], d['isInvisible']"},
    };
    const char *const results[] = {"('Red', False)", "('Orange', False)", "('TEXT', False)",
                                   "('tt\\nt', False)", "(None, True)"};
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.command) + " " + row.value);
        const TemporaryFolder folder;
        (void)folder.file("f");
        EXPECT_EQ(outputOf(folder, {row.command, "f"}), row.none);
        EXPECT_EQ(outputOf(folder, {row.command, row.value, "f"}), "");
        EXPECT_EQ(outputOf(folder, {row.command, "f"}), row.shown);
        EXPECT_EQ(readJson(outputOf(folder, {"info", "--json", "f"}), row.json),
                  results[&row - rows]);
        EXPECT_EQ(outputOf(folder, {row.command, "f", row.removed}), "");
        EXPECT_EQ(outputOf(folder, {row.command, "f"}), row.none);
    }
}

TEST(Attributes, LabelsStayWithMovedAndCopiedFiles) {
    const TemporaryFolder folder;
    (void)folder.file("f");
    EXPECT_EQ(outputOf(folder, {"label", "red", "f"}), "");
    (void)runProcess({"mv", folder.at("f"), folder.at("moved")});
    (void)runProcess({"cp", "-a", folder.at("moved"), folder.at("copied")});
    EXPECT_EQ(outputOf(folder, {"label", "moved"}), "Red\n");
    EXPECT_EQ(readJson(outputOf(folder, {"label", "--json", "copied"}), "d['label']"), "Red");
    EXPECT_NE(outputOf(folder, {"info", "copied"}).find("Label         Red"), std::string::npos);
}

TEST(Attributes, AmbiguousAndInvalidValuesAreRejected) {
    const TemporaryFolder folder;
    (void)folder.file("red");
    (void)folder.file("blue");
    EXPECT_EQ(outputOf(folder, {"label", "red", "blue"}),
              "mwfile: red blue: either could be the item; write ./ before its name\n");
    EXPECT_EQ(outputOf(folder, {"label", "red"}), "None\n");
    EXPECT_EQ(outputOf(folder, {"label", "./red", "blue"}), "");
    EXPECT_EQ(outputOf(folder, {"label", "red"}), "Blue\n");
    EXPECT_EQ(outputOf(folder, {"label", "puce", "./red"}),
              "mwfile: puce: a label is none, gray, green, purple, blue, yellow, red or orange\n");
    EXPECT_EQ(outputOf(folder, {"type", "red", "TEXTS"}),
              "mwfile: TEXTS: a type is four characters or none\n");
    EXPECT_EQ(outputOf(folder, {"lock", "missing", "on"}),
              "mwfile: missing: no such file or folder\n");
    EXPECT_EQ(outputOf(folder, {"label", "/dev/null", "red"}),
              "mwfile: /dev/null: the file system cannot keep that for such an item\n");
    EXPECT_EQ(mwfile({"label"}).status, 2);
}

TEST(Attributes, SuperuserCanLock) {
    const TemporaryFolder folder;
    (void)folder.file("f");
    if (geteuid() == 0 && outputOf(folder, {"lock", "on", "f"}).empty()) {
        EXPECT_EQ(runProcess({"lsattr", folder.at("f")}).output.substr(0, 5), "----i");
        EXPECT_EQ(outputOf(folder, {"lock", "f"}), "on\n");
        EXPECT_EQ(readJson(outputOf(folder, {"info", "--json", "f"}), "d['isLocked']"), "True");
        EXPECT_TRUE(outputOf(folder, {"list", "."}).ends_with("  f  (locked)\n"));
        EXPECT_EQ(outputOf(folder, {"label", "f", "red"}), "mwfile: f: not permitted\n");
        EXPECT_EQ(outputOf(folder, {"lock", "off", "f"}), "");
        EXPECT_EQ(outputOf(folder, {"lock", "f"}), "off\n");
    }
}

TEST(Aliases, AreMadeResolvedAndShown) {
    const TemporaryFolder folder;
    (void)folder.folder("target");
    EXPECT_EQ(outputOf(folder, {"alias", "make", "target", "a.desktop"}), "");
    EXPECT_EQ(outputOf(folder, {"alias", "make", "--finder", "target", "b"}), "");
    (void)runProcess({"mv", folder.at("target"), folder.at("\xFFmoved")});
    for (const char *const alias : {"a.desktop", "b"}) {
        EXPECT_EQ(outputOf(folder, {"alias", "resolve", alias}), folder.at("\xFFmoved") + "\n");
        EXPECT_EQ(readJson(outputOf(folder, {"alias", "resolve", "--json", alias}),
                           "d['aliasOrLinkTargetPath'] + ' ' + d['aliasOrLinkTargetKind']"),
                  folder.at("\xFFmoved") + " folder");
        EXPECT_EQ(readJson(outputOf(folder, {"alias", "show", "--json", alias}), "d['path']"),
                  folder.at("target"));
        EXPECT_EQ(linesOf(outputOf(folder, {"alias", "show", alias}))[0],
                  "Path     " + folder.at("target"));
    }
    (void)runProcess({"rmdir", folder.at("\xFFmoved")});
    EXPECT_EQ(outputOf(folder, {"alias", "resolve", "b"}), "mwfile: b: its target is gone\n");
    (void)folder.file("plain");
    EXPECT_EQ(outputOf(folder, {"alias", "resolve", "plain"}), "mwfile: plain: not an alias\n");
    EXPECT_EQ(outputOf(folder, {"alias", "show", "plain"}),
              "mwfile: plain: contains no alias record\n");
    EXPECT_EQ(outputOf(folder, {"alias", "make", "plain", "c"}),
              "mwfile: c: the name must end with .desktop\n");
    EXPECT_EQ(outputOf(folder, {"alias", "make", "plain", "a.desktop"}),
              "mwfile: a.desktop: it already exists\n");
    EXPECT_EQ(mwfile({"alias"}).status, 2);
}

} // namespace
