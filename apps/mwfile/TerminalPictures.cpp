// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "TerminalPictures.h"

#include "SixelEncoding.h"

#include <MWCore/PngEncoding.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include <sys/ioctl.h>
#include <unistd.h>

namespace MWCore::mwfile {
namespace {

constexpr const char *kNoPictures = "the terminal cannot show pictures";

// Every terminal skips control sequences that it does not know, but a few print strings.
constexpr std::string_view kNameAndCellSize = "\033[>q\033[16t";
constexpr std::string_view kBackgroundAndRegisters = "\033]11;?\033\\\033[?1;1;0S";
constexpr std::string_view kKittyPixel = "\033_Gi=31,s=1,v=1,a=q,t=d,f=24;AAAA\033\\";
constexpr std::string_view kITermFeatures = "\033]1337;Capabilities\033\\";
constexpr std::string_view kSaveCursor = "\0337";
constexpr std::string_view kRestoreCursorAndErase = "\0338\033[K";

std::string_view terminalType() {
    const char *const type = std::getenv("TERM");
    return type ? type : "";
}

bool isInForeground() {
    return tcgetpgrp(STDOUT_FILENO) == getpgrp();
}

/// Whether it is tmux or screen, which show terminals in a terminal.
bool isMultiplexer(const TerminalAnswers &answers) {
    const std::string_view type = terminalType();
    const bool isInScreen = std::getenv("STY") != nullptr; // whose type may be that of another
    return isInScreen || type.starts_with("screen") || type.starts_with("tmux") ||
           answers.name().starts_with("tmux");
}

/// Requests for the protocols that a terminal has. What it prints of them is erased. To tmux and
/// screen, some of these strings are titles, and screen passes others on to a terminal that answers
/// late; they are asked no more than is needed.
std::string protocolRequests(const TerminalAnswers &answers) {
    if (isMultiplexer(answers))
        return std::string(answers.hasSixel() ? kBackgroundAndRegisters : "");
    return std::string(kSaveCursor)
        .append(kBackgroundAndRegisters)
        .append(kKittyPixel)
        .append(kITermFeatures)
        .append(kRestoreCursorAndErase);
}

/// Room for an icon: eight rows of characters with @p cell pixels, fewer on a small terminal.
PictureRoom roomOn(const winsize &screen, QSize cell) {
    constexpr int kUsualRows = 8;
    constexpr int kRowsKept = 2; // for the heading and the prompt
    constexpr int kMargin = 4;
    const int widest = (screen.ws_col - kMargin) * cell.width() / cell.height();
    PictureRoom room;
    room.rows = std::min({kUsualRows, screen.ws_row - kRowsKept, widest});
    room.pixels = room.rows * cell.height();
    room.columns = (room.pixels + cell.width() - 1) / cell.width();
    return room;
}

/// The size of a character in pixels, by the terminal's driver, else by its answer, else as usual.
QSize cellSize(const winsize &screen, QSize answered) {
    constexpr QSize kUsual(8, 16);
    constexpr int kLargest = 256;
    QSize cell = answered;
    if (screen.ws_xpixel > 0 && screen.ws_ypixel > 0 && screen.ws_col > 0 && screen.ws_row > 0)
        cell = {screen.ws_xpixel / screen.ws_col, screen.ws_ypixel / screen.ws_row};
    const bool isUsable = !cell.isEmpty() && std::max(cell.width(), cell.height()) <= kLargest;
    return isUsable ? cell : kUsual;
}

QByteArray base64Png(const QImage &image) {
    return encodePng(image).toBase64();
}

/// The graphics protocol of kitty. No answer is wanted (q=2).
std::string kittyPicture(const QImage &image) {
    constexpr qsizetype kLongestPiece = 4096;
    const QByteArray content = base64Png(image);
    std::string text;
    for (qsizetype begin = 0; begin < content.size(); begin += kLongestPiece) {
        const bool isLast = begin + kLongestPiece >= content.size();
        text.append(begin == 0 ? "\033_Ga=T,f=100,q=2," : "\033_Gq=2,")
            .append(isLast ? "m=0;" : "m=1;")
            .append(content.sliced(begin, std::min(kLongestPiece, content.size() - begin)))
            .append("\033\\");
    }
    return text;
}

/// An inline image of iTerm2.
std::string inlineImage(const QImage &image, int rows) {
    return "\033]1337;File=inline=1;preserveAspectRatio=1;height=" + std::to_string(rows) + ":" +
           base64Png(image).toStdString() + "\a";
}

std::string sixelPicture(const QImage &image, const TerminalAnswers &answers) {
    constexpr int kMostRegisters = 256;
    return encodeSixel(image,
                       {std::min(answers.colourRegisters(), kMostRegisters), answers.background()});
}

} // namespace

TerminalPictures::TerminalPictures() : obstacle_(prepare()) {}

/// The obstacle; empty if there is none.
std::string TerminalPictures::prepare() {
    winsize screen = {};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &screen) != 0)
        return "standard output is not a terminal";
    const std::string_view type = terminalType();
    if (type.empty() || type == "dumb" || type == "linux")
        return kNoPictures;
    if (!isInForeground())
        return "mwfile is not in the foreground";
    if (std::string obstacle = askAll(); !obstacle.empty())
        return obstacle;
    room_ = roomOn(screen, cellSize(screen, answers_.cell()));
    return room_.rows < 1 ? "the terminal is too small" : "";
}

/// Restores the terminal before anything is drawn, unless answers are missing.
std::string TerminalPictures::askAll() {
    dialogue_.emplace();
    if (!dialogue_->canAsk())
        return "keys were typed meanwhile";
    if (!dialogue_->ask(kNameAndCellSize) ||
        !dialogue_->ask(protocolRequests(dialogue_->answers())))
        return "the terminal does not answer";
    answers_ = dialogue_->answers();
    dialogue_.reset();
    protocol_ = bestProtocol();
    return protocol_ == Protocol::None ? kNoPictures : "";
}

TerminalPictures::Protocol TerminalPictures::bestProtocol() const {
    if (answers_.hasKittyGraphics())
        return Protocol::Kitty;
    if (answers_.hasInlineImages() || answers_.name().starts_with("iTerm2"))
        return Protocol::InlineImages;
    return answers_.hasSixel() ? Protocol::Sixel : Protocol::None;
}

std::string TerminalPictures::drawing(const QImage &image) const {
    switch (protocol_) {
    case Protocol::Kitty:
        return kittyPicture(image);
    case Protocol::InlineImages:
        return inlineImage(image, room_.rows);
    case Protocol::Sixel:
        return sixelPicture(image, answers_);
    case Protocol::None:
        break;
    }
    return {};
}

} // namespace MWCore::mwfile
