// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <QRgb>
#include <QSize>

namespace MWCore::mwfile {

/// What a terminal says about itself, in control sequences of ECMA-48 and xterm. Anything else that
/// it sends, such as keys, is ignored.
class TerminalAnswers {
public:
    /// Reads what has arrived; an answer may arrive in pieces.
    void add(std::string_view bytes);

    /// How many requests for the primary device attributes it has answered. Every terminal does.
    [[nodiscard]] int attributeCount() const { return attributeCount_; }

    /// "XTerm(379)", "tmux 3.4"; empty if it does not say.
    [[nodiscard]] const std::string &name() const { return name_; }

    [[nodiscard]] bool hasKittyGraphics() const { return hasKittyGraphics_; }
    [[nodiscard]] bool hasInlineImages() const { return hasInlineImages_; } ///< those of iTerm2
    [[nodiscard]] bool hasSixel() const { return hasSixel_; }

    /// How many colours of sixel pictures it stores.
    [[nodiscard]] int colourRegisters() const { return colourRegisters_; }

    /// The size of a character in pixels; empty if it is not known.
    [[nodiscard]] QSize cell() const { return cell_; }

    [[nodiscard]] std::optional<QRgb> background() const { return background_; }

private:
    bool takeOne();
    void read(char kind, std::string_view body);
    void readControlSequence(std::string_view body);
    void readSystemCommand(std::string_view body);

    std::string rest_; ///< what arrived and was not read
    int attributeCount_ = 0;
    std::string name_;
    bool hasKittyGraphics_ = false;
    bool hasInlineImages_ = false;
    bool hasSixel_ = false;
    int colourRegisters_ = 256;
    QSize cell_;
    std::optional<QRgb> background_;
};

} // namespace MWCore::mwfile
