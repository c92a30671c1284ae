// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

/// Runs the command in @p folder; its output, or its complaint.
std::string said(const TemporaryFolder &folder, const std::vector<std::string> &arguments) {
    ProcessOptions options;
    options.workingFolder = folder.path();
    const ProcessResult result = mwfile(arguments, options);
    EXPECT_EQ(result.status == 0, result.errorOutput.empty()) << result.errorOutput;
    return result.output + result.errorOutput;
}

TEST(Attributes, AreSetShownAndRemoved) {
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
    const char *const facts[] = {"('Red', False)", "('Orange', False)", "('TEXT', False)",
                                 "('tt\\nt', False)", "(None, True)"};
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.command) + " " + row.value);
        const TemporaryFolder folder;
        (void)folder.file("f");
        EXPECT_EQ(said(folder, {row.command, "f"}), row.none);
        EXPECT_EQ(said(folder, {row.command, row.value, "f"}), "");
        EXPECT_EQ(said(folder, {row.command, "f"}), row.shown);
        EXPECT_EQ(readJson(said(folder, {"info", "--json", "f"}), row.json), facts[&row - rows]);
        EXPECT_EQ(said(folder, {row.command, "f", row.removed}), "");
        EXPECT_EQ(said(folder, {row.command, "f"}), row.none);
    }
}

TEST(Attributes, ALabelGoesWhereTheFileGoes) {
    const TemporaryFolder folder;
    (void)folder.file("f");
    EXPECT_EQ(said(folder, {"label", "red", "f"}), "");
    (void)runProcess({"mv", folder.at("f"), folder.at("moved")});
    (void)runProcess({"cp", "-a", folder.at("moved"), folder.at("copied")});
    EXPECT_EQ(said(folder, {"label", "moved"}), "Red\n");
    EXPECT_EQ(readJson(said(folder, {"label", "--json", "copied"}), "d['label']"), "Red");
    EXPECT_NE(said(folder, {"info", "copied"}).find("Label         Red"), std::string::npos);
}

TEST(Attributes, WhatCouldMeanTwoThingsIsNotDone) {
    const TemporaryFolder folder;
    (void)folder.file("red");
    (void)folder.file("blue");
    EXPECT_EQ(said(folder, {"label", "red", "blue"}),
              "mwfile: red blue: either could be the item; write ./ before its name\n");
    EXPECT_EQ(said(folder, {"label", "red"}), "None\n");
    EXPECT_EQ(said(folder, {"label", "./red", "blue"}), "");
    EXPECT_EQ(said(folder, {"label", "red"}), "Blue\n");
    EXPECT_EQ(said(folder, {"label", "puce", "./red"}),
              "mwfile: puce: a label is none, gray, green, purple, blue, yellow, red, orange\n");
    EXPECT_EQ(said(folder, {"type", "red", "TEXTS"}),
              "mwfile: TEXTS: a type is four characters, or none\n");
    EXPECT_EQ(said(folder, {"lock", "missing", "on"}), "mwfile: missing: no such file or folder\n");
    EXPECT_EQ(said(folder, {"label", "/dev/null", "red"}),
              "mwfile: /dev/null: the file system cannot keep that for such an item\n");
    EXPECT_EQ(mwfile({"label"}).status, 2);
}

TEST(Attributes, OnlyTheSuperuserLocks) {
    const TemporaryFolder folder;
    (void)folder.file("f");
    if (geteuid() == 0 && said(folder, {"lock", "on", "f"}).empty()) {
        EXPECT_EQ(runProcess({"lsattr", folder.at("f")}).output.substr(0, 5), "----i");
        EXPECT_EQ(said(folder, {"lock", "f"}), "on\n");
        EXPECT_EQ(readJson(said(folder, {"info", "--json", "f"}), "d['isLocked']"), "True");
        EXPECT_TRUE(said(folder, {"list", "."}).ends_with("  f  (locked)\n"));
        EXPECT_EQ(said(folder, {"label", "f", "red"}), "mwfile: f: not permitted\n");
        EXPECT_EQ(said(folder, {"lock", "off", "f"}), "");
        EXPECT_EQ(said(folder, {"lock", "f"}), "off\n");
    }
}

TEST(Aliases, AreMadeFollowedAndShown) {
    const TemporaryFolder folder;
    (void)folder.folder("target");
    EXPECT_EQ(said(folder, {"alias", "make", "target", "a.desktop"}), "");
    EXPECT_EQ(said(folder, {"alias", "make", "--finder", "target", "b"}), "");
    (void)runProcess({"mv", folder.at("target"), folder.at("\xFFmoved")});
    for (const char *const alias : {"a.desktop", "b"}) {
        EXPECT_EQ(said(folder, {"alias", "resolve", alias}), folder.at("\xFFmoved") + "\n");
        EXPECT_EQ(readJson(said(folder, {"alias", "resolve", "--json", alias}),
                           "d['aliasOrLinkTargetPath'] + ' ' + d['aliasOrLinkTargetKind']"),
                  folder.at("\xFFmoved") + " folder");
        EXPECT_EQ(readJson(said(folder, {"alias", "show", "--json", alias}), "d['path']"),
                  folder.at("target"));
        EXPECT_EQ(linesOf(said(folder, {"alias", "show", alias}))[0],
                  "Path     " + folder.at("target"));
    }
    (void)runProcess({"rmdir", folder.at("\xFFmoved")});
    EXPECT_EQ(said(folder, {"alias", "resolve", "b"}), "mwfile: b: what it leads to is gone\n");
    (void)folder.file("plain");
    EXPECT_EQ(said(folder, {"alias", "resolve", "plain"}), "mwfile: plain: not an alias\n");
    EXPECT_EQ(said(folder, {"alias", "show", "plain"}), "mwfile: plain: holds no alias record\n");
    EXPECT_EQ(said(folder, {"alias", "make", "plain", "c"}),
              "mwfile: c: the name of such an alias ends with .desktop\n");
    EXPECT_EQ(said(folder, {"alias", "make", "plain", "a.desktop"}),
              "mwfile: a.desktop: it already exists\n");
    EXPECT_EQ(mwfile({"alias"}).status, 2);
}

} // namespace
