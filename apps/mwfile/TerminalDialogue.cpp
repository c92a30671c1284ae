// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "TerminalDialogue.h"

#include <algorithm>
#include <string>

#include <poll.h>
#include <unistd.h>

namespace MWCore::mwfile {
namespace {

constexpr std::chrono::milliseconds kLongestWait(500);
constexpr std::chrono::milliseconds kLatestAnswer(1500);

/// Every terminal answers it, and answers requests in order: the others were answered before or
/// never will be.
constexpr std::string_view kPrimaryDeviceAttributes = "\033[c";

/// Whether @p event occurs at @p descriptor in time.
bool waitsFor(short event, int descriptor, std::chrono::milliseconds time) {
    pollfd source = {descriptor, event, 0};
    return poll(&source, 1, static_cast<int>(std::max<long>(time.count(), 0))) == 1 &&
           (source.revents & event) != 0;
}

} // namespace

TerminalDialogue::~TerminalDialogue() {
    if (!terminal_.isOpen() || answers_.attributeCount() >= askedCount_)
        return;
    receiveUntil(lastAsked_ + kLatestAnswer);
    terminal_.discardRest();
}

bool TerminalDialogue::canAsk() const {
    return terminal_.isOpen() && !waitsFor(POLLIN, terminal_.descriptor(), {});
}

bool TerminalDialogue::ask(std::string_view requests) {
    lastAsked_ = Clock::now();
    ++askedCount_;
    return send(std::string(requests).append(kPrimaryDeviceAttributes)) &&
           receiveUntil(lastAsked_ + kLongestWait);
}

/// A terminal that takes nothing, as its user has stopped the output, is given up.
bool TerminalDialogue::send(std::string_view bytes) const {
    return waitsFor(POLLOUT, terminal_.descriptor(), kLongestWait) &&
           write(terminal_.descriptor(), bytes.data(), bytes.size()) ==
               static_cast<ssize_t>(bytes.size());
}

/// True once all questions are answered.
bool TerminalDialogue::receiveUntil(Clock::time_point end) {
    while (answers_.attributeCount() < askedCount_) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        char buffer[1024];
        if (!waitsFor(POLLIN, terminal_.descriptor(), left))
            return false;
        const ssize_t length = read(terminal_.descriptor(), buffer, sizeof buffer);
        if (length <= 0)
            return false;
        answers_.add({buffer, static_cast<std::size_t>(length)});
    }
    return true;
}

} // namespace MWCore::mwfile
