// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

/// Every field of the record, in its order.
constexpr const char *kFields =
    "[d[key] for key in ('dataForkSize', 'physicalDataForkSize', 'resourceForkSize', "
    "'physicalResourceForkSize', 'volumeFreeBytes', 'totalSize', 'physicalTotalSize', "
    "'containedItemCount', 'containedFolderCount', 'containedFileCount', 'hiddenItemCount')]";

TEST(SizeCommand, PrintsEveryField) {
    const TemporaryFolder folder;
    folder.file("file", 5000);
    folder.folder("sub");
    folder.link("sub/link", "../file");
    fs::create_hard_link(folder.at("file"), folder.at("sub/twin"));
    struct stat file = {};
    ASSERT_EQ(stat(folder.at("file").c_str(), &file), 0);
    const std::string allocated = std::to_string(file.st_blocks * 512);
    const std::string twice = std::to_string(file.st_blocks * 512 * 2);
    const std::string json = mwfile({"size", "--json", folder.path()}).output;
    EXPECT_EQ(readJson(json, kFields),
              "[10007, " + twice + ", 0, 0, 0, 10007, " + twice + ", 4, 1, 3, 0]");
    EXPECT_EQ(readJson(json, "d['completePath'], d['isPartial'], d['unreadableCount']"),
              "('" + folder.path() + "', False, 0)");
    EXPECT_EQ(readJson(mwfile({"size", "--json", "--links-once", folder.path()}).output, kFields),
              "[5007, " + allocated + ", 0, 0, 0, 5007, " + allocated + ", 4, 1, 3, 0]");
    const std::string text = mwfile({"size", folder.path() + "/"}).output;
    EXPECT_NE(text.find("on disk. ( 10,007 bytes )\n"), std::string::npos) << text;
    EXPECT_NE(text.find("3 Files. 1 Folders. ( 0 hidden )\n"), std::string::npos) << text;
}

TEST(SizeCommand, CountsAForkInASidecarOnceOnRequest) {
    const TemporaryFolder folder;
    folder.file("file");
    std::ofstream(folder.at("._file"), std::ios::binary)
        << std::string("\0\5\x16\7\0\2\0\0", 8) << std::string(16, ' ')
        << std::string("\0\1\0\0\0\2\0\0\0\x26\0\0\0\4", 14) << "fork";
    constexpr const char *kTotal = "d['totalSize'], d['resourceForkSize']";
    EXPECT_EQ(readJson(mwfile({"size", "--json", folder.path()}).output, kTotal), "(46, 4)");
    EXPECT_EQ(readJson(mwfile({"size", "--json", "--sidecars-once", folder.path()}).output, kTotal),
              "(42, 4)");
}

TEST(SizeCommand, UsesTheVolumeOrWalksIt) {
    const std::string text = mwfile({"size", "/proc"}).output;
    EXPECT_NE(text.find("Capacity"), std::string::npos) << text;
    const ProcessResult walked = mwfile({"size", "--walk", "--json", "/proc/sys"});
    EXPECT_EQ(readJson(walked.output, "d['containedFileCount'] > 100"), "True");
}

TEST(SizeCommand, ReportsUnreadableItems) {
    const TemporaryFolder folder;
    folder.folder("closed \x1B\xFF");
    ASSERT_EQ(chmod(folder.at("closed \x1B\xFF").c_str(), 0), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    ProcessOptions options;
    options.asNobody = true;
    const ProcessResult counted = mwfile({"size", folder.path()}, options);
    EXPECT_EQ(counted.status, 1);
    EXPECT_NE(counted.output.find("1 item (--errors lists them)"), std::string::npos);
    EXPECT_NE(counted.errorOutput.find("1 item could not be read"), std::string::npos);
    const ProcessResult listed = mwfile({"size", "--errors", folder.path()}, options);
    EXPECT_NE(listed.output.find(folder.path() + "/closed \\e\\xff: not permitted\n"),
              std::string::npos)
        << listed.output;
    const ProcessResult json = mwfile({"size", "--errors", "--json", folder.path()}, options);
    EXPECT_EQ(readJson(json.output, "d['unreadable'][0]['path']"),
              folder.path() + "/closed \x1B\xFF");
    folder.file("damaged");
    folder.damagedSidecar("damaged");
    EXPECT_NE(mwfile({"size", folder.at("damaged")}).errorOutput.find("stored data is damaged"),
              std::string::npos);
    for (const std::string &path :
         {folder.at("closed \x1B\xFF"), folder.at("nothing"), folder.at("damaged")}) {
        const ProcessResult failed = mwfile({"size", path}, options);
        EXPECT_EQ(failed.status, 1);
        EXPECT_EQ(failed.output, "");
        EXPECT_EQ(linesOf(failed.errorOutput).size(), 1U) << failed.errorOutput;
    }
}

TEST(SizeCommand, PrintsPartialSumsWhenInterrupted) {
    // Sends SIGINT as soon as the command handles it.
    constexpr const char *kInterrupted =
        "import re, signal, subprocess, sys, time\n"
        "size = subprocess.Popen(sys.argv[1:])\n"
        "status = f'/proc/{size.pid}/status'\n"
        "caught = lambda: int(re.search(r'SigCgt:\\s*(\\w+)', open(status).read())[1], 16)\n"
        "while size.poll() is None and not caught() & 1 << signal.SIGINT - 1:\n"
        "    time.sleep(0.01)\n"
        "size.send_signal(signal.SIGINT)\n"
        "sys.exit(size.wait())\n";
    const ProcessResult stopped =
        runProcess({"python3", "-c", kInterrupted, MWFILE, "size", "--walk", "--json", "/"});
    EXPECT_EQ(stopped.status, 1) << "unless it had finished before";
    EXPECT_EQ(readJson(stopped.output, "d['isPartial'], d['containedItemCount'] > 0"),
              "(True, True)");
    EXPECT_NE(stopped.errorOutput.find("interrupted, the sums are partial"), std::string::npos);
}

TEST(SizeCommand, ShowsProgressOnATerminal) {
    ProcessOptions options;
    options.outputTo = OutputTo::Terminal;
    options.environment = {"TERM=xterm"};
    const std::string shown = mwfile({"size", "/usr"}, options).output;
    const std::size_t live = shown.find(" entries/s\x1B[K");
    const std::size_t gone = shown.rfind("\r\x1B[K");
    if (shown.find(" entries, ") != std::string::npos) { // otherwise it finished too soon
        EXPECT_NE(live, std::string::npos) << shown;
        EXPECT_LT(gone, shown.find("/usr")) << "the line is removed before the result";
    }
    options.environment = {"TERM=dumb"};
    EXPECT_EQ(mwfile({"size", "/usr"}, options).output.find('\x1B'), std::string::npos);
}

} // namespace
