// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "TerminalDialogue.h"

#include <optional>
#include <string>

#include <QImage>

namespace MWCore::mwfile {

/// The room that a square picture takes on a terminal.
struct PictureRoom {
    int rows = 0;
    int columns = 0;
    int pixels = 0; ///< of a side, so that the terminal need not scale it
};

/// Pictures on the terminal that standard output goes to. Has to exist until the output is written:
/// the destructor keeps late answers of the terminal from the shell.
class TerminalPictures {
public:
    /// Asks the terminal what it can show. Nothing is sent if standard output goes elsewhere, this
    /// process is in the background, or the terminal's type shows no pictures.
    TerminalPictures();

    /// Why no picture can be shown; empty if one can.
    [[nodiscard]] const std::string &obstacle() const { return obstacle_; }

    [[nodiscard]] const PictureRoom &room() const { return room_; }

    /// The characters that draw @p image at the cursor, which then is anywhere.
    [[nodiscard]] std::string drawing(const QImage &image) const;

private:
    enum class Protocol { None, Kitty, InlineImages, Sixel };

    std::string prepare();
    std::string askAll();
    [[nodiscard]] Protocol bestProtocol() const;

    std::optional<TerminalDialogue> dialogue_;
    TerminalAnswers answers_;
    Protocol protocol_ = Protocol::None;
    PictureRoom room_;
    std::string obstacle_;
};

} // namespace MWCore::mwfile
