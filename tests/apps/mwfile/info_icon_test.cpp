// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/apps/mwfile/mwfile.h"
#include "tests/apps/mwfile/ScriptedTerminal.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>

namespace {

using Script = std::vector<ScriptedTerminal::Row>;

/// The last request of each of the two times that a terminal is asked.
constexpr const char *kRequest = "\033[c";
constexpr const char *kNoSixel = "\033[?62;22c";

ScriptedTerminal::Row replyTo(const std::string &output, const std::string &answer) {
    return {output, [answer](const ScriptedTerminal &terminal) { terminal.type(answer); }};
}

Script answering(const std::string &first, const std::string &second) {
    return {replyTo(kRequest, first), replyTo(kRequest, second)};
}

/// What stands in @p text between @p begin and @p end, at all places, each without what stands up
/// to the last of @p separators.
std::string between(const std::string &text, const std::string &begin, const std::string &end,
                    const char *separators = "") {
    std::string result;
    for (std::size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, at)) {
        at += begin.size();
        const std::string piece = text.substr(at, text.find(end, at) - at);
        result += piece.substr(piece.find_last_of(separators) + 1);
    }
    return result;
}

/// The end of the control sequence after the escape character at @p at.
std::size_t endOfSequence(const std::string &text, std::size_t at) {
    const char kind = text[at + 1];
    if (kind == '[')
        return std::min(text.find_first_not_of("0123456789;?>", at + 2), text.size() - 1) + 1;
    if (kind == '7' || kind == '8')
        return at + 2;
    const std::size_t end = text.find_first_of("\033\a", at + 2);
    return end == std::string::npos ? text.size() : end + (text[end] == '\a' ? 1 : 2);
}

// Not by a std::regex, which needs stack for each character.
std::string withoutControlSequences(const std::string &text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t escape = std::min(text.find('\033', at), text.size());
        result += text.substr(at, escape - at);
        at = escape + 1 < text.size() ? endOfSequence(text, escape) : text.size();
    }
    return result;
}

/// A file with an opaque icon, a gradient.
class InfoIcon : public testing::Test {
protected:
    InfoIcon() {
        constexpr int kSide = 256;
        std::string picture = "P6 256 256 255\n";
        for (int row = 0; row < kSide; ++row)
            for (int column = 0; column < kSide; ++column)
                picture += {static_cast<char>(column), static_cast<char>(row), '\x40'};
        folder_.write("picture.ppm", picture);
        EXPECT_EQ(mwfile({"icon", "set", file_, folder_.at("picture.ppm")}).errorOutput, "");
    }

    /// The icon as the browser shows it, on eight lines of twenty pixels.
    std::string exported() const {
        const std::string path = folder_.at("icon.png");
        EXPECT_EQ(mwfile({"icon", "export", file_, path, "--size", "160"}).errorOutput, "");
        return path;
    }

    int run(const Script &script) {
        return terminal_.run({MWFILE, "info", "--icon", file_}, script);
    }

    TemporaryFolder folder_;
    std::string file_ = folder_.file("f");
    ScriptedTerminal terminal_;
};

TEST_F(InfoIcon, IsDrawnAsPngWhereTheTerminalAnswersSo) {
    struct Row {
        Script script;
        const char *begin; ///< of each piece of the picture
        const char *end;
    };
    const Row rows[] = {
        {answering("\033P>|kitty(0.26.5)\033\\\033[?62;c",
                   "\033[A\033]11;rgb:1e1e/1e1e/1e1e\033\\\033_Gi=31;OK\033\\\033[?62;c"),
         "\033_G", "\033\\"},
        {answering("\033[?62;4c", "\033]1337;Capabilities=T3CwLrMSc7UUw9Ts3BFGs\033\\\033[?62;4c"),
         "\033]1337;File=", "\a"},
    };
    std::ifstream file(exported(), std::ios::binary);
    const std::string png(std::istreambuf_iterator<char>(file), {});
    for (const Row &row : rows) {
        ScriptedTerminal terminal;
        EXPECT_EQ(terminal.run({MWFILE, "info", "--icon", file_}, row.script), 0);
        const std::string &output = terminal.output();
        const std::string drawing = output.substr(output.find(file_));
        ProcessOptions options;
        options.input = between(drawing, row.begin, row.end, ";:");
        EXPECT_EQ(runProcess({"base64", "-d"}, options).output, png);
        EXPECT_TRUE(terminal.isRestored());
        EXPECT_EQ(terminal.unread(), "");
    }
}

TEST_F(InfoIcon, IsDrawnAsSixelsInTheColoursThatTheTerminalHas) {
    struct Row {
        const char *registers;
        double error; ///< the mean one, from 0 to 1
    };
    const Row rows[] = {{"\033[?1;0;1024S", 0.02}, {"\033[?1;3;0S", 0.02}, {"\033[?1;0;16S", 0.1}};
    const std::string icon = exported();
    for (const Row &row : rows) {
        ScriptedTerminal terminal;
        const std::string answer = row.registers + std::string("\033[?63;4c");
        EXPECT_EQ(terminal.run({MWFILE, "info", "--icon", file_}, answering("\033[?4c", answer)),
                  0);
        ProcessOptions sixels;
        sixels.input = "\033P" + between(terminal.output(), "\033P", "\033\\") + "\033\\";
        const std::string picture =
            folder_.write("decoded.png", runProcess({"sixel2png"}, sixels).output);
        const std::string difference =
            runProcess({imageMagick(), icon, picture, "-metric", "RMSE", "-compare", "-format",
                        "%w %[distortion]", "info:"})
                .output;
        ASSERT_TRUE(difference.starts_with("160 ")) << difference;
        EXPECT_LT(std::stod(difference.substr(4)), row.error);
    }
}

TEST_F(InfoIcon, StandsBesideThePropertiesWithin80Columns) {
    const std::string name(150, 'n');
    (void)folder_.file(name);
    const std::string link = folder_.link("link", name);
    EXPECT_EQ(terminal_.run({MWFILE, "info", "--icon", link}, answering("\033[?4c", "\033[?4c")),
              0);
    std::string output = terminal_.output();
    output.erase(0, output.find(link));
    constexpr std::size_t kIndent = 18;
    std::string target;
    for (const std::string &line : linesOf(withoutControlSequences(output))) {
        const bool isHeading = line.starts_with(folder_.path());
        EXPECT_LE(isHeading ? 0 : kIndent + line.size() - 1, 80U) << line;
        target += line.substr(std::min<std::size_t>(line.size(), 16), line.size());
    }
    std::erase(target, '\r');
    EXPECT_NE(target.find(folder_.at(name)), std::string::npos) << target;
}

TEST_F(InfoIcon, IsReplacedByANoteOnOtherTerminals) {
    const std::string usual = mwfile({"info", file_}).output;
    struct Row {
        const char *why;
        const char *type;
        Script script;
    };
    const Row rows[] = {
        {"the terminal cannot show pictures", "xterm", answering(kNoSixel, kNoSixel)},
        {"the terminal cannot show pictures", "tmux-256color", answering(kNoSixel, kNoSixel)},
        {"the terminal cannot show pictures", "screen", answering(kNoSixel, kNoSixel)},
        {"the terminal cannot show pictures", "dumb", {}},
        {"the terminal does not answer", "xterm", {}},
        {"the terminal does not answer", "xterm", {replyTo("Kind", kNoSixel)}},
        {"the terminal does not answer",
         "xterm",
         {replyTo(kRequest, "\033[?62"), replyTo("Kind", ";4c")}},
        {"the terminal cannot show pictures", "xterm",
         answering("\033[;;t\033[6;-1;99999999999t\033P>|" + std::string(3000, 'x') + "\033[?c",
                   "\xFF\033\033[\033_Gi=31;E\033\\\033]11;rgb:/1/12345\a\033[?1;0;-5S\033[?2;4;\a"
                   "\033[?62c")},
    };
    for (const Row &row : rows) {
        ScriptedTerminal terminal;
        EXPECT_EQ(terminal.run({MWFILE, "info", "--icon", file_}, row.script, row.type), 0);
        std::string text = withoutControlSequences(terminal.output());
        std::erase(text, '\r');
        std::string wanted =
            "mwfile: --icon: " + std::string(row.why) + "; use mwfile icon export\n";
        wanted += usual;
        EXPECT_EQ(text, wanted);
        EXPECT_TRUE(terminal.isRestored()) << row.why;
        EXPECT_EQ(terminal.unread(), "") << row.why;
        const bool isAsked = terminal.output().find(kRequest) != std::string::npos;
        EXPECT_EQ(isAsked, std::string(row.type) != "dumb");
        const bool isAskedAll = terminal.output().find("\033]11;?") != std::string::npos;
        EXPECT_LE(isAskedAll, row.type == std::string("xterm")); // screen passes it on
    }
}

TEST_F(InfoIcon, LeavesAloneWhatTheUserTypedBefore) {
    terminal_.type("ls");
    EXPECT_EQ(run(answering("\033[?4c", "\033[?4c")), 0);
    EXPECT_NE(terminal_.output().find("keys were typed"), std::string::npos);
    EXPECT_EQ(terminal_.unread(), "ls");
}

TEST_F(InfoIcon, RestoresTheTerminalIfASignalEndsTheCommand) {
    constexpr int kBySignal = 128;
    struct Row {
        int signal;
        std::function<void(ScriptedTerminal &)> reply;
    };
    const Row rows[] = {
        {SIGINT, [](ScriptedTerminal &terminal) { terminal.type("\x03"); }},
        {SIGTERM, [](ScriptedTerminal &terminal) { kill(terminal.process(), SIGTERM); }},
        {SIGHUP, [](ScriptedTerminal &terminal) { kill(terminal.process(), SIGHUP); }},
    };
    for (const Row &row : rows) {
        ScriptedTerminal terminal;
        const Script script = {{kRequest, row.reply}};
        EXPECT_EQ(terminal.run({MWFILE, "info", "--icon", file_}, script), kBySignal + row.signal);
        EXPECT_TRUE(terminal.isRestored()) << row.signal;
    }
    const Script closed = {{kRequest, [](ScriptedTerminal &terminal) { terminal.hangUp(); }}};
    EXPECT_EQ(run(closed), kBySignal + SIGHUP);
}

TEST_F(InfoIcon, NeedsATerminal) {
    const ProcessResult result = mwfile({"info", "--icon", file_});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, mwfile({"info", file_}).output);
    EXPECT_EQ(result.errorOutput,
              "mwfile: --icon: standard output is not a terminal; use mwfile icon export\n");
    EXPECT_EQ(mwfile({"info", "--icon", "--json", file_}).status, 2);
}

} // namespace
