// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/times.h"
#include "tests/support/UnresponsiveMount.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The last word of each line: the names of a listing without blanks in them.
std::string namesOf(const std::string &listing) {
    std::string names;
    for (const std::string &line : linesOf(listing))
        names += line.substr(line.rfind(' ') + 1) + " ";
    return names;
}

TEST(List, SortsHidesAndReverses) {
    const TemporaryFolder folder;
    folder.file("beta", 30);
    folder.file("Alpha", 20);
    folder.file("\xc3\x84rger", 10); // capital and small A umlaut are one letter
    folder.file("\xc3\xa4hre", uintmax_t{5} << 30);
    folder.file(".hidden", 5);
    folder.folder("zoo");
    folder.folder("bin");
    ASSERT_EQ(chmod(folder.at("beta").c_str(), 0107), 0);
    ASSERT_EQ(chmod(folder.at("Alpha").c_str(), 0700), 0);
    ASSERT_EQ(chmod(folder.at("\xc3\xa4hre").c_str(), 0645), 0);
    std::time_t date = 1'000'000'000;
    for (const char *const name :
         {"zoo", "Alpha", "\xc3\xa4hre", "beta", "\xc3\x84rger", ".hidden", "bin"})
        setModificationTime(folder.at(name), {++date, 0});
    struct Row {
        std::vector<std::string> options;
        const char *names;
    };
    const Row rows[] = {
        {{}, "Alpha beta zoo \xc3\xa4hre \xc3\x84rger "},
        {{"--reverse"}, "\xc3\x84rger \xc3\xa4hre zoo beta Alpha "},
        {{"--all"}, ".hidden Alpha beta bin zoo \xc3\xa4hre \xc3\x84rger "},
        {{"--sort", "date"}, "zoo Alpha \xc3\xa4hre beta \xc3\x84rger "},
        {{"--sort", "size"}, "zoo \xc3\x84rger Alpha beta \xc3\xa4hre "},
        {{"--sort", "access", "--reverse"}, "zoo Alpha \xc3\xa4hre \xc3\x84rger beta "},
    };
    for (const Row &row : rows) {
        std::vector<std::string> command = {"list", folder.path()};
        command.insert(command.end(), row.options.begin(), row.options.end());
        EXPECT_EQ(namesOf(mwfile(command).output), row.names);
    }
}

TEST(List, ShowsAnnotationsAfterTheName) {
    const TemporaryFolder folder;
    folder.folder("Editor.app");
    folder.folder("Editor.app/Contents");
    folder.file("Editor.app/Contents/Info.plist");
    folder.folder("parts.framework");
    folder.file("plain");
    folder.file("others");
    folder.link("dead", "nowhere");
    folder.link("link", "others");
    folder.fifo("fifo.desktop"); // would be opened if it were a file
    ASSERT_EQ(chmod(folder.at("others").c_str(), 0007), 0);
    for (const std::vector<std::string> &command : std::vector<std::vector<std::string>>{
             {"alias", "make", folder.path(), folder.at("alias.desktop")},
             {"alias", "make", "--finder", folder.at("plain"), folder.at("alias")},
             {"label", "red", folder.at("parts.framework")},
             {"label", "blue", folder.at("plain")},
             {"invisible", "on", folder.at("plain")}})
        ASSERT_EQ(mwfile(command).errorOutput, "");
    struct Row {
        const char *name;
        std::string ending; ///< of the row, from the name on
        std::string facts;  ///< in JSON: kind, label, permissions and other members
    };
    const Row rows[] = {
        {"Editor.app", "  (application)", "application None rwxr-xr-x True"},
        {"parts.framework", "  (package, Red)", "package Red rwxr-xr-x"},
        {"plain", "  (Blue, invisible)", "file Blue rw-r--r-- invisible"},
        {"others", "", "file None ------rwx"},
        {"fifo.desktop", "", "unknown None rw-r--r--"},
        {"dead", " -> nowhere", "unknown None --------- None unknown"},
        {"link", " -> " + folder.at("others"),
         "link None ------rwx " + folder.at("others") + " file"},
        {"alias", " -> " + folder.at("plain") + "  (alias)",
         "alias None rw-r--r-- " + folder.at("plain") + " file"},
        {"alias.desktop", " -> " + folder.path() + "  (alias)",
         "alias None rw-r--r-- " + folder.path() + " folder"},
    };
    const ProcessResult text = runProcess({"timeout", "5", MWFILE, "list", folder.path()});
    const std::string json = mwfile({"list", "--json", folder.path()}).output;
    EXPECT_EQ(linesOf(text.output).size(), std::size(rows)) << text.output;
    for (const Row &row : rows) {
        EXPECT_NE(text.output.find("  " + (row.name + row.ending) + "\n"), std::string::npos)
            << row.name << "\n"
            << text.output;
        EXPECT_EQ(readJson(json, "[' '.join(map(str, [i['kind'], i['label'], "
                                 "i['permissionsAsString']] + ['invisible'] * i['isInvisible'] + "
                                 "[i[k] for k in ('aliasOrLinkTargetPath', "
                                 "'aliasOrLinkTargetKind', 'isPackagedApplication') if k in i]"
                                 ")) for i in d if i['name'] == '" +
                                     std::string(row.name) + "'][0]"),
                  row.facts);
    }
}

TEST(List, DoesNotWaitForTargetsOfAliases) {
    const MountedFolder home("tmpfs");
    if (!home.failureReason().empty())
        GTEST_SKIP() << home.failureReason();
    std::filesystem::create_directory(home.at("silent"));
    std::filesystem::create_directory(home.at("listed"));
    std::ofstream(home.at("listed/a.desktop"))
        << "[Desktop Entry]\nType=Link\nURL=file://" << home.at("silent/item") << "\n";
    const UnresponsiveMount silent(home.at("silent"));
    if (!silent.failureReason().empty())
        GTEST_SKIP() << silent.failureReason();
    const ProcessResult text =
        runProcess({"timeout", "-s", "KILL", "20", MWFILE, "list", home.at("listed")});
    EXPECT_NE(text.output.find("a.desktop -> not looked for  (alias)\n"), std::string::npos)
        << text.output;
    const ProcessResult json =
        runProcess({"timeout", "-s", "KILL", "20", MWFILE, "list", "--json", home.at("listed")});
    EXPECT_EQ(readJson(json.output, "d[0]['aliasOrLinkTargetPath'], d[0]['aliasOrLinkTargetKind']"),
              "(None, 'unknown')");
}

TEST(List, CountsHiddenItemsOnATerminal) {
    const TemporaryFolder folder;
    for (const char *const name : {".a", "tmp", "seen"})
        folder.file(name);
    const auto lastLine = [&](OutputTo outputTo, const char *option) {
        ProcessOptions options;
        options.outputTo = outputTo;
        options.environment = {"TERM=xterm", "NO_COLOR=1"};
        const std::string output = mwfile({"list", option, folder.path()}, options).output;
        return linesOf(output).back();
    };
    EXPECT_TRUE(lastLine(OutputTo::Terminal, "--reverse").starts_with("2 hidden"));
    EXPECT_TRUE(lastLine(OutputTo::Pipe, "--reverse").ends_with("  seen"));
    EXPECT_EQ(lastLine(OutputTo::Terminal, "--all").find("hidden"), std::string::npos);
    EXPECT_TRUE(lastLine(OutputTo::Terminal, "--json").starts_with("]"));
}

TEST(List, AnnotationsAreNotWrapped) {
    const TemporaryFolder folder;
    ASSERT_EQ(mwfile({"label", "red", folder.file("\xe6\xbc\xa2\xe5\xad\x97")}).errorOutput, "");
    ProcessOptions options;
    options.outputTo = OutputTo::Terminal;
    options.environment = {"TERM=xterm", "NO_COLOR=1"};
    const auto printed = [&](int columns) {
        const std::string command =
            "stty cols " + std::to_string(columns) + R"( <&1 && "$0" list "$1")";
        std::string text = runProcess({"sh", "-c", command, MWFILE, folder.path()}, options).output;
        std::erase(text, '\r');
        return text;
    };
    const std::string whole = printed(200);
    ASSERT_TRUE(whole.ends_with("  (Red)\n"));
    const int columns = static_cast<int>(whole.size()) - 1 -
                        2; // two characters of three bytes and two columns each
    EXPECT_EQ(printed(columns), whole);
    const std::string name = whole.substr(0, whole.rfind("  (Red)"));
    EXPECT_EQ(printed(columns - 1),
              name + "\n" + std::string(static_cast<std::size_t>(columns) - 1 - 5, ' ') +
                  "(Red)\n");
}

TEST(List, EscapesUnprintableCharacters) {
    const TemporaryFolder folder;
    for (const char *const name :
         {"plain", "\xe6\xbc\xa2\xe5\xad\x97", "e\xcc\x81", "\xff", "a\nb", "\x1b[31mred",
          "\xe2\x80\xae"
          "gpj",
          "\xc2\x9b"
          "c1",
          "back\\slash", "\xed\xa0\x80", "\xf0\x9f\x98\x80", "tab\t"})
        folder.file(name);
    const ProcessResult result = mwfile({"list", folder.path()});
    const char *const expected[] = {"\\e[31mred",
                                    "\\u{202e}gpj",
                                    "\\u{9b}c1",
                                    "\\xed\\xa0\\x80",
                                    "\\xff",
                                    "a\\nb",
                                    "back\\\\slash",
                                    "e\xcc\x81",
                                    "plain",
                                    "tab\\t",
                                    "\xe6\xbc\xa2\xe5\xad\x97",
                                    "\xf0\x9f\x98\x80"};
    std::vector<std::string> names;
    for (const std::string &line : linesOf(result.output))
        names.push_back(line.substr(line.rfind("  ") + 2));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, std::vector<std::string>(std::begin(expected), std::end(expected)));
}

TEST(List, JsonPreservesEveryByte) {
    const TemporaryFolder folder;
    const std::string names[] = {"\xff\xfe", "a\nb\"\\", "\xc3\xa9",    "\xe2\x80\xae",
                                 "\x1b",     "\x7f",     "\xed\xb3\xbf"};
    for (const std::string &name : names)
        folder.file(name);
    folder.file("huge", uintmax_t{5} << 30);
    folder.link("dead", "nowhere");
    folder.link("live", "huge");
    const std::string json = mwfile({"list", "--json", folder.path()}).output;
    EXPECT_EQ(std::count_if(json.begin(), json.end(),
                            [](char c) { return c != '\n' && (c < ' ' || c == 0x7f) && c >= 0; }),
              0);
    const std::string found = readJson(json, "'\\0'.join(i['name'] for i in d)");
    for (const std::string &name : names)
        EXPECT_NE(found.find(name), std::string::npos);
    EXPECT_EQ(readJson(json, "{i['name']: i for i in d}['huge']['size']"), "5368709120");
    EXPECT_EQ(readJson(json, "{i['name']: i for i in d}['dead']['aliasOrLinkTargetPath']"), "None");
    EXPECT_EQ(readJson(json, "{i['name']: i for i in d}['live']['aliasOrLinkTargetPath']"),
              folder.at("huge"));
    const TemporaryFolder empty;
    EXPECT_EQ(readJson(mwfile({"list", "--json", empty.path()}).output, "d"), "[]");
}

TEST(List, IsColouredOnlyOnATerminal) {
    const TemporaryFolder folder;
    folder.folder("sub");
    const auto isColoured = [&](OutputTo outputTo, std::vector<std::string> environment) {
        ProcessOptions options;
        options.outputTo = outputTo;
        options.environment = std::move(environment);
        return mwfile({"list", folder.path()}, options).output.find('\x1b') != std::string::npos;
    };
    EXPECT_TRUE(isColoured(OutputTo::Terminal, {"TERM=xterm", "NO_COLOR="}));
    EXPECT_FALSE(isColoured(OutputTo::Terminal, {"TERM=xterm", "NO_COLOR=1"}));
    EXPECT_FALSE(isColoured(OutputTo::Terminal, {"TERM=dumb", "NO_COLOR="}));
    EXPECT_FALSE(isColoured(OutputTo::Pipe, {"TERM=xterm", "NO_COLOR="}));
}

/// Runs a copy of the command that anybody may run, without root privileges.
ProcessResult mwfileAsNobody(std::vector<std::string> arguments) {
    const TemporaryFolder place;
    chmod(place.path().c_str(), 0755);
    runProcess({"cp", "-L", MWFILE, MWFILE_CORE, MWFILE_FRAMEWORK, place.path()});
    ProcessOptions options;
    options.asNobody = true;
    options.environment = {"LD_LIBRARY_PATH=" + place.path()};
    arguments.insert(arguments.begin(), place.at("mwfile"));
    return runProcess(arguments, options);
}

TEST(List, FailuresPrintOneLineAndReturnOne) {
    const TemporaryFolder folder;
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    folder.file("file");
    folder.fifo("fifo");
    folder.link("loop", "loop");
    for (const char *const name : {"unreadable", "unsearchable"}) {
        folder.folder(name);
        folder.file(std::string(name) + "/x");
    }
    ASSERT_EQ(chmod(folder.at("unreadable").c_str(), 0711), 0);
    ASSERT_EQ(chmod(folder.at("unsearchable").c_str(), 0744), 0);
    struct Row {
        std::string path;
        const char *reason;
    };
    const Row rows[] = {
        {folder.at("missing"), "no such file or folder"},
        {folder.at("file"), "not a folder"},
        {folder.at("file/x"), "not a folder"},
        {folder.at("fifo"), "not a folder"},
        {folder.at("loop"), "its aliases or links form a loop"},
        {folder.at("unreadable"), "not permitted"},
        {folder.at("unsearchable"), "not permitted"},
        {"/dev", "what lies below a path that begins with /dev is not listed"},
        {"", "no such file or folder"},
        {folder.at("\x1b[31m\xff"), "no such file or folder"},
    };
    for (const Row &row : rows)
        for (const char *const form : {"--reverse", "--json"}) {
            const ProcessResult result = mwfileAsNobody({"list", form, row.path});
            EXPECT_EQ(result.status, 1) << row.path;
            EXPECT_EQ(result.output, "") << row.path;
            ASSERT_EQ(linesOf(result.errorOutput).size(), 1U);
            EXPECT_TRUE(linesOf(result.errorOutput)[0].ends_with(std::string(": ") + row.reason))
                << result.errorOutput;
            EXPECT_EQ(result.errorOutput.find('\x1b'), std::string::npos);
        }
}

TEST(List, ReportsAFullOutputDisk) {
    const ProcessResult result =
        runProcess({"sh", "-c", "\"$0\" list /usr/bin >/dev/full", MWFILE});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errorOutput, "mwfile: standard output: No space left on device\n");
}

} // namespace
